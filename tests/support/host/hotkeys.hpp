#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

#include <obs.h>

#include <optional>

// Short names for OBS's modifier bits.
inline constexpr uint32_t controlKey = INTERACT_CONTROL_KEY;
inline constexpr uint32_t shiftKey = INTERACT_SHIFT_KEY;
inline constexpr uint32_t altKey = INTERACT_ALT_KEY;
inline constexpr uint32_t commandKey = INTERACT_COMMAND_KEY;

Q_DECLARE_METATYPE(obs_key_t)

struct HotkeyInfo {
	obs_hotkey_id id{OBS_INVALID_HOTKEY_ID};
	QString description{};
	obs_hotkey_registerer_type registerer{OBS_HOTKEY_REGISTERER_FRONTEND};
};

std::optional<HotkeyInfo> findHotkey(const char *name);

/// Registers another owner's hotkey, bound to `combination`.
obs_hotkey_id addForeignHotkey(const char *name, const char *description, const obs_key_combination &combination);

void bindHotkey(obs_hotkey_id id, const QList<obs_key_combination> &combinations);

/// The bound combinations as modifier bits and key name: "6 OBS_KEY_C".
QStringList boundCombinations(obs_hotkey_id id);

/// Calls the hotkey's callback on another thread, as OBS's hotkey thread does, and waits for it.
void pressHotkey(const char *name, bool pressed);
