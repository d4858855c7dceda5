#pragma once

#include <QString>

#include <obs.hpp>

// The clip hotkey. OBS stores its bindings; the preferences file is the fallback if OBS has none.

/// Registers the hotkey, once at module load. User-interface thread.
void registerClipHotkey();

/// Unregisters it if it was registered.
void unregisterClipHotkey();

/// The hotkey's id, OBS_INVALID_HOTKEY_ID before registration. Any thread.
obs_hotkey_id clipHotkeyId();

/// Its bindings as text, joined with ", "; empty without any. Any thread: libobs locks its hotkey tables.
QString currentHotkeyText();

/// The default that the dock offers: Ctrl+Shift+C.
obs_key_combination defaultCombination();

/// Saves the bindings in OBS's save data, or loads them. OBS calls it on the user-interface thread.
void saveOrLoadClipHotkey(obs_data_t *saveData, bool saving, void *privateData);

/// Binds the keys in the preferences file if the hotkey has no binding. User-interface thread.
void loadHotkeyFromSettings();

/// Replaces the bindings with `bindings` (a binding array). User-interface thread.
void bindClipHotkey(obs_data_array_t *bindings);

/// Saves `bindings` in the preferences file. User-interface thread.
void storeHotkeyInSettings(obs_data_array_t *bindings);
