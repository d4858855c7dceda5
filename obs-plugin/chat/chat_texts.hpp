#pragma once

#include <QString>

class QJsonObject;

/// Whether the chat command is enabled and allowed to read the chat.
bool chatGranted(const QJsonObject &chat);

/// The chat section's state as rich text: the helper's error, the missing step, or what mods can type. The helper's
/// texts are escaped.
QString chatStateText(const QJsonObject &chat);

/// The settings as compact JSON for "--chat-set". A cap of 0 means no cap.
QString chatSettingsJson(bool enabled, const QString &command, int cooldown_s, int perStreamCap);
