#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include "cost.hpp"
#include "dock_host.hpp"
#include "host/hotkeys.hpp"
#include "hotkey/binding_record.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/combination_text.hpp"
#include "hotkey/hotkey_conflicts.hpp"

#include <vector>

// An input is OBS's save data as JSON; its member "kestrune_hotkey" holds the clip hotkey's bindings.

namespace {
/// The clip hotkey's bindings as OBS saves them.
QJsonObject saved()
{
	const OBSDataAutoRelease saveData = obs_data_create();
	saveOrLoadClipHotkey(saveData, true, nullptr);
	return QJsonDocument::fromJson(obs_data_get_json(saveData)).object();
}

std::vector<obs_key_combination> bound()
{
	std::vector<obs_key_combination> combinations;
	obs_enum_hotkey_bindings(
		[](void *found, size_t, obs_hotkey_binding_t *binding) {
			if (obs_hotkey_binding_get_hotkey_id(binding) == clipHotkeyId()) {
				static_cast<std::vector<obs_key_combination> *>(found)->push_back(
					obs_hotkey_binding_get_key_combination(binding));
			}
			return true;
		},
		&combinations);
	return combinations;
}

void requireRoundTrip(const obs_key_combination &combination)
{
	const OBSDataArrayAutoRelease record = hotkeyComboToData(combination);
	bindClipHotkey(record);
	const std::vector<obs_key_combination> now = bound();
	require(now.size() == 1 && now[0].modifiers == combination.modifiers && now[0].key == combination.key,
		"a combination comes back from its record as it was");
	require(currentHotkeyText() == hotkeyComboText(combination), "the binding's text is that of the combination");
	require(hotkeyConflicts(combination).isEmpty(), "the clip hotkey is in no conflict with itself");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	const FuzzDock &dock = FuzzDock::fresh(true);
	const OBSDataAutoRelease saveData = obs_data_create_from_json(toBytes(data, size).constData());
	if (!saveData) {
		return -1;
	}

	{
		const CostWatch watch({.mayOpen = isOwnFile});
		saveOrLoadClipHotkey(saveData, false, nullptr);
		FuzzDock::settle();
	}
	require(!dock.isWidened(), "the main window may be as narrow as before");

	const QJsonObject first = saved();
	const QStringList texts = boundCombinations(clipHotkeyId());
	const OBSDataAutoRelease again = obs_data_create_from_json(QJsonDocument(first).toJson().constData());
	saveOrLoadClipHotkey(again, false, nullptr);
	require(boundCombinations(clipHotkeyId()) == texts, "bindings saved and loaded are the same");
	require(saved() == first, "bindings saved, loaded and saved are the same");

	for (const obs_key_combination &combination : bound()) {
		requireRoundTrip(combination);
	}
	lookForLeaks();
	return 0;
}
