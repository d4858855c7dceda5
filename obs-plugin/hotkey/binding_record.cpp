#include "hotkey/binding_record.hpp"

OBSDataArrayAutoRelease hotkeyComboToData(const obs_key_combination &combination)
{
	const auto has = [&combination](uint32_t modifier) { return (combination.modifiers & modifier) != 0; };

	const OBSDataAutoRelease record = obs_data_create();
	obs_data_set_bool(record, "shift", has(INTERACT_SHIFT_KEY));
	obs_data_set_bool(record, "control", has(INTERACT_CONTROL_KEY));
	obs_data_set_bool(record, "alt", has(INTERACT_ALT_KEY));
	obs_data_set_bool(record, "command", has(INTERACT_COMMAND_KEY));
	obs_data_set_string(record, "key", obs_key_to_name(combination.key));

	OBSDataArrayAutoRelease bindings = obs_data_array_create();
	obs_data_array_push_back(bindings, record);
	return bindings;
}
