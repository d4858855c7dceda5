#pragma once

#include <QString>

#include <obs.hpp>

// The OBS hotkey that clips. OBS keeps its bindings in its own save data; the preferences file is the fallback for a
// hotkey that has none after that.

/// Registers the hotkey with OBS. User-interface thread, once at module load.
void registerClipHotkey();

/// Unregisters it, if it was registered.
void unregisterClipHotkey();

/// The hotkey's id; OBS_INVALID_HOTKEY_ID before registration. Any thread.
obs_hotkey_id clipHotkeyId();

/// The texts of all its bindings, joined with ", "; empty when it has none. Any thread: libobs locks its hotkey tables.
QString currentHotkeyText();

/// The default binding that the dock offers: Ctrl+Shift+C.
obs_key_combination defaultCombination();

/// Stores the bindings in OBS's save data, or takes them from there. Registered with
/// obs_frontend_add_save_callback; called by OBS on the user-interface thread.
void saveOrLoadClipHotkey(obs_data_t *saveData, bool saving, void *privateData);

/// Binds what the preferences file holds when the hotkey has no binding. User-interface thread.
void loadHotkeyFromSettings();

/// Binds exactly `bindings` (a binding array). User-interface thread.
void bindClipHotkey(obs_data_array_t *bindings);

/// Stores `bindings` in the preferences file. User-interface thread.
void storeHotkeyInSettings(obs_data_array_t *bindings);
