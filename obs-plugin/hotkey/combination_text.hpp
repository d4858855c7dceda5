#pragma once

#include <QString>

struct obs_key_combination;

/// A key combination as the user reads it, for example "Ctrl+Shift+C"; empty for no key and no modifier. Any thread.
QString hotkeyComboText(const obs_key_combination &combination);

/// The texts of all bindings of the clip hotkey, joined with ", "; empty when it has none. Any thread: libobs locks
/// its hotkey tables.
QString currentHotkeyText();
