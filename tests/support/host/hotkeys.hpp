#pragma once

#include <QString>

#include <obs.h>

#include <optional>

// OBS's modifier bits, by their short names.
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

/// The registered OBS hotkey with this name.
std::optional<HotkeyInfo> findHotkey(const char *name);

/// Registers a hotkey of somebody else, bound to `combination`.
obs_hotkey_id addForeignHotkey(const char *name, const char *description, const obs_key_combination &combination);

/// Binds the hotkey to these combinations, in this order.
void bindHotkey(obs_hotkey_id id, std::initializer_list<obs_key_combination> combinations);

/// Texts of the combinations that the hotkey is bound to: modifier bits and key name, "6 OBS_KEY_C".
QStringList boundCombinations(obs_hotkey_id id);

/// Has OBS call the hotkey's callback on a thread of its own, as its hotkey thread does, and waits for the end of that.
void pressHotkey(const char *name, bool pressed);
