#include <QString>

#include "fake_obs/hotkeys.hpp"

#include <obs.hpp>

#include <algorithm>
#include <list>
#include <mutex>
#include <string>

// As in libobs, callbacks run while the hotkeys are locked, and may call these functions.

struct obs_hotkey {
	obs_hotkey_id id{OBS_INVALID_HOTKEY_ID};
	std::string name{};
	std::string description{};
	obs_hotkey_func callback{nullptr};
	void *data{nullptr};
};

struct obs_hotkey_binding {
	obs_key_combination_t combination{};
	obs_hotkey_id id{OBS_INVALID_HOTKEY_ID};
};

namespace {
struct Modifier {
	const char *name;
	uint32_t flag;
};
constexpr Modifier modifiers[]{{"shift", INTERACT_SHIFT_KEY},
			       {"control", INTERACT_CONTROL_KEY},
			       {"alt", INTERACT_ALT_KEY},
			       {"command", INTERACT_COMMAND_KEY}};

std::recursive_mutex mutex;
std::list<obs_hotkey> hotkeys;
std::list<obs_hotkey_binding> bindings;
obs_hotkey_id nextId = 0;
bool rerouted = false;

obs_hotkey *find(obs_hotkey_id id)
{
	const auto found = std::ranges::find(hotkeys, id, &obs_hotkey::id);
	return found == hotkeys.end() ? nullptr : &*found;
}

void removeBindings(obs_hotkey_id id)
{
	std::erase_if(bindings, [id](const obs_hotkey_binding &binding) { return binding.id == id; });
}

obs_key_combination_t combinationOf(obs_data_t *record)
{
	obs_key_combination_t combination{INTERACT_NONE, obs_key_from_name(obs_data_get_string(record, "key"))};
	for (const Modifier &modifier : modifiers) {
		if (obs_data_get_bool(record, modifier.name)) {
			combination.modifiers |= modifier.flag;
		}
	}
	return combination;
}
} // namespace

void forgetHotkeys()
{
	const std::lock_guard lock(mutex);
	hotkeys.clear();
	bindings.clear();
	nextId = 0;
	rerouted = false;
}

obs_hotkey_id obs_hotkey_register_frontend(const char *name, const char *description, obs_hotkey_func func, void *data)
{
	const std::lock_guard lock(mutex);
	if (!obs_initialized()) {
		return OBS_INVALID_HOTKEY_ID;
	}
	hotkeys.push_back({nextId, name, description, func, data});
	return nextId++;
}

void obs_hotkey_unregister(obs_hotkey_id id)
{
	const std::lock_guard lock(mutex);
	removeBindings(id);
	std::erase_if(hotkeys, [id](const obs_hotkey &hotkey) { return hotkey.id == id; });
}

void obs_hotkey_load(obs_hotkey_id id, obs_data_array_t *data)
{
	const std::lock_guard lock(mutex);
	if (!find(id)) {
		return;
	}
	removeBindings(id);
	for (size_t index = 0; index < obs_data_array_count(data); ++index) {
		const OBSDataAutoRelease record = obs_data_array_item(data, index);
		bindings.push_back({combinationOf(record), id});
	}
}

obs_data_array_t *obs_hotkey_save(obs_hotkey_id id)
{
	const std::lock_guard lock(mutex);
	if (!find(id)) {
		return nullptr;
	}
	obs_data_array_t *records = obs_data_array_create();
	for (const obs_hotkey_binding &binding : bindings) {
		if (binding.id != id) {
			continue;
		}
		const OBSDataAutoRelease record = obs_data_create();
		for (const Modifier &modifier : modifiers) {
			if ((binding.combination.modifiers & modifier.flag) != 0) {
				obs_data_set_bool(record, modifier.name, true);
			}
		}
		obs_data_set_string(record, "key", obs_key_to_name(binding.combination.key));
		obs_data_array_push_back(records, record);
	}
	return records;
}

void obs_enum_hotkeys(obs_hotkey_enum_func func, void *data)
{
	const std::lock_guard lock(mutex);
	for (obs_hotkey &hotkey : hotkeys) {
		if (!func(data, hotkey.id, &hotkey)) {
			return;
		}
	}
}

void obs_enum_hotkey_bindings(obs_hotkey_binding_enum_func func, void *data)
{
	const std::lock_guard lock(mutex);
	size_t index = 0;
	for (obs_hotkey_binding &binding : bindings) {
		if (!func(data, index++, &binding)) {
			return;
		}
	}
}

const char *obs_hotkey_get_name(const obs_hotkey_t *key)
{
	return key->name.c_str();
}

const char *obs_hotkey_get_description(const obs_hotkey_t *key)
{
	return key->description.c_str();
}

obs_hotkey_registerer_t obs_hotkey_get_registerer_type(const obs_hotkey_t *)
{
	return OBS_HOTKEY_REGISTERER_FRONTEND;
}

obs_key_combination_t obs_hotkey_binding_get_key_combination(obs_hotkey_binding_t *binding)
{
	return binding->combination;
}

obs_hotkey_id obs_hotkey_binding_get_hotkey_id(obs_hotkey_binding_t *binding)
{
	return binding->id;
}

obs_hotkey_t *obs_hotkey_binding_get_hotkey(obs_hotkey_binding_t *binding)
{
	return find(binding->id);
}

void obs_hotkey_inject_event(obs_key_combination_t hotkey, bool pressed)
{
	const std::lock_guard lock(mutex);
	for (const obs_hotkey_binding &binding : bindings) {
		obs_hotkey *bound = find(binding.id);
		if (!rerouted && bound && binding.combination.key == hotkey.key &&
		    binding.combination.modifiers == hotkey.modifiers) {
			bound->callback(bound->data, bound->id, bound, pressed);
		}
	}
}

void obs_hotkey_enable_callback_rerouting(bool enable)
{
	const std::lock_guard lock(mutex);
	rerouted = enable;
}

void obs_hotkey_trigger_routed_callback(obs_hotkey_id id, bool pressed)
{
	const std::lock_guard lock(mutex);
	obs_hotkey *hotkey = rerouted ? find(id) : nullptr;
	if (hotkey) {
		hotkey->callback(hotkey->data, id, hotkey, pressed);
	}
}
