#pragma once

#include <obs.hpp>

/// `combination` as the binding array that OBS itself saves and loads: one record with the four modifiers and the
/// key's name. Any thread.
OBSDataArrayAutoRelease hotkeyComboToData(const obs_key_combination &combination);
