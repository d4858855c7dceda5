#pragma once

#include <QString>

class QJsonObject;

// Texts of the status line about clips.

/// While the user links the account in the browser.
QString waitingForBrowserText(const QString &code);

/// When the user can clip.
QString pressClipThatText();

/// While OBS saves a clip of the length that the user chose, "Last 30 s".
QString savingText(const QString &length);

/// For a Short that the helper reports as ready ("done").
QString shortReadyText(const QJsonObject &done);

/// After `name` asked for a clip in the chat.
QString clippedFromChatText(const QString &name);
