#pragma once

#include <QString>

struct obs_key_combination;

/// A key combination as the user reads it, for example "Ctrl+Shift+C"; empty for no key and no modifier. Any thread.
QString hotkeyComboText(const obs_key_combination &combination);
