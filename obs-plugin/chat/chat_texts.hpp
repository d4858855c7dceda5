#pragma once

#include <QString>

class QJsonObject;

/// Whether the helper reports the chat command switched on and allowed to read the chat.
bool chatGranted(const QJsonObject &chat);

/// The chat section's state label, as rich text: the helper's error, the step still missing, or what mods can type.
/// Everything that comes from the helper is escaped.
QString chatStateText(const QJsonObject &chat);

/// The settings as the helper's "--chat-set" takes them: compact JSON. Cooldown in seconds; a cap of 0 means no cap.
QString chatSettingsJson(bool enabled, const QString &command, int cooldown_s, int perStreamCap);
