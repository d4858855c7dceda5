#pragma once

#include <QString>

class QJsonObject;

// What the user reads about clips.

/// The status line while the user links the account in the browser.
QString waitingForBrowserText(const QString &code);

/// The status line when a clip can be asked for.
QString pressClipThatText();

/// The status line while OBS saves the last `length_s` seconds.
QString savingText(int length_s);

/// The status line for a Short that the helper reports as ready ("done").
QString shortReadyText(const QJsonObject &done);

/// The status line after `name` has asked for a clip in the chat.
QString clippedFromChatText(const QString &name);
