#include <QTest>

#include "host/hotkey_test.hpp"
#include "host/hotkeys.hpp"
#include "host/test_program.hpp"
#include "hotkey/binding_record.hpp"
#include "hotkey/clip_hotkey.hpp"

using namespace Qt::StringLiterals;

class BindingRecordTest : public HotkeyTest {
	Q_OBJECT

private Q_SLOTS:
	void usesObsModifierBits()
	{
		QCOMPARE(shiftKey, 2U);
		QCOMPARE(controlKey, 4U);
		QCOMPARE(altKey, 8U);
		QCOMPARE(commandKey, 128U);
	}

	void bindingRecords_data()
	{
		QTest::addColumn<uint32_t>("modifiers");
		QTest::addColumn<obs_key_t>("key");
		QTest::addColumn<QByteArray>("name");
		QTest::newRow("Ctrl+Shift+C") << (controlKey | shiftKey) << OBS_KEY_C << QByteArray("OBS_KEY_C");
		QTest::newRow("Alt+F24") << altKey << OBS_KEY_F24 << QByteArray("OBS_KEY_F24");
		QTest::newRow("Win+0") << commandKey << OBS_KEY_0 << QByteArray("OBS_KEY_0");
		QTest::newRow("Space") << 0U << OBS_KEY_SPACE << QByteArray("OBS_KEY_SPACE");
	}
	void bindingRecords()
	{
		QFETCH(uint32_t, modifiers);
		QFETCH(obs_key_t, key);
		QFETCH(QByteArray, name);
		const OBSDataArrayAutoRelease bindings = hotkeyComboToData({modifiers, key});
		QCOMPARE(obs_data_array_count(bindings), 1U);
		const OBSDataAutoRelease record = obs_data_array_item(bindings, 0);
		for (const char *member : {"shift", "control", "alt", "command", "key"}) {
			QVERIFY(obs_data_has_user_value(record, member));
		}
		QCOMPARE(obs_data_get_bool(record, "shift"), (modifiers & shiftKey) != 0);
		QCOMPARE(obs_data_get_bool(record, "control"), (modifiers & controlKey) != 0);
		QCOMPARE(obs_data_get_bool(record, "alt"), (modifiers & altKey) != 0);
		QCOMPARE(obs_data_get_bool(record, "command"), (modifiers & commandKey) != 0);
		QCOMPARE(obs_data_get_string(record, "key"), name);
	}

	void aBindingRecordIsWhatObsLoads()
	{
		const obs_hotkey_id id = addForeignHotkey("test.other", "Other", {0, OBS_KEY_A});
		obs_hotkey_load(id, OBSDataArrayAutoRelease(hotkeyComboToData({controlKey | altKey, OBS_KEY_F9})));
		QCOMPARE(boundCombinations(id), QStringList{u"12 OBS_KEY_F9"_s});
	}
};

KESTRUNE_TEST(BindingRecordTest)
#include "binding_record.moc"
