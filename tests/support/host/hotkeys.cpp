#include <QStringList>

#include "host/hotkeys.hpp"

#include <obs.hpp>

#include <cstring>
#include <thread>

using namespace Qt::StringLiterals;

namespace {
struct Search {
	const char *name{nullptr};
	std::optional<HotkeyInfo> found{};
};

struct Bindings {
	obs_hotkey_id id{OBS_INVALID_HOTKEY_ID};
	QStringList texts{};
};
} // namespace

std::optional<HotkeyInfo> findHotkey(const char *name)
{
	Search search{name};
	obs_enum_hotkeys(
		[](void *data, obs_hotkey_id id, obs_hotkey_t *hotkey) {
			auto *wanted = static_cast<Search *>(data);
			if (std::strcmp(obs_hotkey_get_name(hotkey), wanted->name) == 0) {
				wanted->found = {id, QString::fromUtf8(obs_hotkey_get_description(hotkey)),
						 obs_hotkey_get_registerer_type(hotkey)};
			}
			return true;
		},
		&search);
	return search.found;
}

obs_hotkey_id addForeignHotkey(const char *name, const char *description, const obs_key_combination &combination)
{
	const obs_hotkey_id id = obs_hotkey_register_frontend(
		name, description, [](void *, obs_hotkey_id, obs_hotkey_t *, bool) {}, nullptr);
	bindHotkey(id, {combination});
	return id;
}

void bindHotkey(obs_hotkey_id id, const QList<obs_key_combination> &combinations)
{
	const OBSDataArrayAutoRelease bindings = obs_data_array_create();
	for (const obs_key_combination &combination : combinations) {
		const OBSDataAutoRelease binding = obs_data_create();
		obs_data_set_bool(binding, "shift", (combination.modifiers & INTERACT_SHIFT_KEY) != 0);
		obs_data_set_bool(binding, "control", (combination.modifiers & INTERACT_CONTROL_KEY) != 0);
		obs_data_set_bool(binding, "alt", (combination.modifiers & INTERACT_ALT_KEY) != 0);
		obs_data_set_bool(binding, "command", (combination.modifiers & INTERACT_COMMAND_KEY) != 0);
		obs_data_set_string(binding, "key", obs_key_to_name(combination.key));
		obs_data_array_push_back(bindings, binding);
	}
	obs_hotkey_load(id, bindings);
}

QStringList boundCombinations(obs_hotkey_id id)
{
	Bindings bindings{id};
	obs_enum_hotkey_bindings(
		[](void *data, size_t, obs_hotkey_binding_t *binding) {
			auto *wanted = static_cast<Bindings *>(data);
			const obs_key_combination combination = obs_hotkey_binding_get_key_combination(binding);
			if (obs_hotkey_binding_get_hotkey_id(binding) == wanted->id) {
				wanted->texts << u"%1 "_s.arg(combination.modifiers) +
							 QString::fromUtf8(obs_key_to_name(combination.key));
			}
			return true;
		},
		&bindings);
	return bindings.texts;
}

void pressHotkey(const char *name, bool pressed)
{
	const std::optional<HotkeyInfo> hotkey = findHotkey(name);
	if (!hotkey) {
		return;
	}
	obs_hotkey_enable_callback_rerouting(true);
	std::thread([&] { obs_hotkey_trigger_routed_callback(hotkey->id, pressed); }).join();
}
