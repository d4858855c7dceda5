#pragma once

#include <QString>

struct obs_key_combination;

/// A key combination as text, such as "Ctrl+Shift+C"; empty without key and modifiers. Any thread.
QString hotkeyComboText(const obs_key_combination &combination);
