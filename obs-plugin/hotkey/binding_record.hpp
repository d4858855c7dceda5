#pragma once

#include <obs.hpp>

/// `combination` as the binding array that OBS saves: one record with the modifiers and the key's name. Any thread.
OBSDataArrayAutoRelease hotkeyComboToData(const obs_key_combination &combination);
