#include <QTest>

#include "host/obs_session.hpp"
#include "host/test_program.hpp"
#include "hotkey/clip_hotkey.hpp"

#include <obs.hpp>

/// The clip hotkey before registration: no id, no effect.
class UnregisteredHotkeyTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void hasNoIdAndNoText()
	{
		const ObsSession obs;
		QCOMPARE(clipHotkeyId(), OBS_INVALID_HOTKEY_ID);
		QCOMPARE(currentHotkeyText(), QString());
	}

	void savingLeavesTheSaveDataAlone()
	{
		const ObsSession obs;
		const OBSDataAutoRelease saveData = obs_data_create_from_json(R"({"other": 1})");
		saveOrLoadClipHotkey(saveData, true, nullptr);
		QCOMPARE(obs_data_get_json(saveData), R"({"other":1})");
	}

	void loadingAndUnregisteringDoNothing()
	{
		const ObsSession obs;
		const OBSDataAutoRelease saveData =
			obs_data_create_from_json(R"({"kestrune_hotkey": [{"key": "OBS_KEY_C"}]})");
		saveOrLoadClipHotkey(saveData, false, nullptr);
		loadHotkeyFromSettings();
		unregisterClipHotkey();
		QCOMPARE(clipHotkeyId(), OBS_INVALID_HOTKEY_ID);
		QCOMPARE(currentHotkeyText(), QString());
	}
};

KESTRUNE_TEST(UnregisteredHotkeyTest)
#include "unregistered.moc"
