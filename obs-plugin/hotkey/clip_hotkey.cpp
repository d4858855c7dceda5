#include <QStringList>

#include "dock/preferences_file.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/combination_text.hpp"
#include "module/dock_access.hpp"

namespace {
constexpr const char *saveDataKey = "kestrune_hotkey";

obs_hotkey_id hotkeyId = OBS_INVALID_HOTKEY_ID;

// libobs calls it on its hotkey thread, OBS Studio on the user-interface thread.
void onClipHotkey(void *, obs_hotkey_id, obs_hotkey_t *, bool pressed)
{
	if (pressed) {
		invokeDockSlot("clipThat");
	}
}

void bindUnlessEmpty(obs_data_array_t *bindings)
{
	if (bindings && obs_data_array_count(bindings) > 0) {
		bindClipHotkey(bindings);
	}
}
} // namespace

void registerClipHotkey()
{
	hotkeyId = obs_hotkey_register_frontend("kestrune.clip_that", "Kestrune: Clip that", onClipHotkey, nullptr);
}

void unregisterClipHotkey()
{
	if (hotkeyId != OBS_INVALID_HOTKEY_ID) {
		obs_hotkey_unregister(hotkeyId);
	}
}

obs_hotkey_id clipHotkeyId()
{
	return hotkeyId;
}

QString currentHotkeyText()
{
	if (clipHotkeyId() == OBS_INVALID_HOTKEY_ID) {
		return {};
	}

	QStringList texts;
	obs_enum_hotkey_bindings(
		[](void *data, size_t, obs_hotkey_binding_t *binding) {
			if (obs_hotkey_binding_get_hotkey_id(binding) == clipHotkeyId()) {
				*static_cast<QStringList *>(data)
					<< hotkeyComboText(obs_hotkey_binding_get_key_combination(binding));
			}
			return true;
		},
		&texts);
	texts.removeAll(QString());
	return texts.join(u", ");
}

obs_key_combination defaultCombination()
{
	return {INTERACT_CONTROL_KEY | INTERACT_SHIFT_KEY, obs_key_from_name("OBS_KEY_C")};
}

void saveOrLoadClipHotkey(obs_data_t *saveData, bool saving, void *)
{
	if (saving) {
		if (hotkeyId == OBS_INVALID_HOTKEY_ID) {
			return;
		}
		const OBSDataArrayAutoRelease bindings = obs_hotkey_save(hotkeyId);
		obs_data_set_array(saveData, saveDataKey, bindings);
		return;
	}

	const OBSDataArrayAutoRelease bindings = obs_data_get_array(saveData, saveDataKey);
	bindUnlessEmpty(bindings);
	if (!dockExists()) {
		return;
	}
	loadHotkeyFromSettings();
	invokeDockSlot("refreshHotkeyUi");
}

void loadHotkeyFromSettings()
{
	if (hotkeyId == OBS_INVALID_HOTKEY_ID || !currentHotkeyText().isEmpty()) {
		return;
	}

	const OBSDataAutoRelease preferences = readPreferences();
	if (!preferences) {
		return;
	}
	const OBSDataArrayAutoRelease bindings = obs_data_get_array(preferences, "hotkey");
	bindUnlessEmpty(bindings);
}

void bindClipHotkey(obs_data_array_t *bindings)
{
	if (hotkeyId != OBS_INVALID_HOTKEY_ID) {
		obs_hotkey_load(hotkeyId, bindings);
	}
}

void storeHotkeyInSettings(obs_data_array_t *bindings)
{
	updatePreferences([bindings](obs_data_t *preferences) {
		obs_data_set_array(preferences, "hotkey", bindings);
		obs_data_set_bool(preferences, "hotkey_offered", true);
	});
}
