#include <QKeyEvent>
#include <QTest>

#include "host/test_program.hpp"
#include "host/hotkeys.hpp"
#include "host/obs_session.hpp"
#include "hotkey/binding_record.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_conflicts.hpp"
#include "hotkey/hotkey_text.hpp"
#include "hotkey/key_translation.hpp"

#include <optional>

using namespace Qt::StringLiterals;

namespace {
constexpr uint32_t control = INTERACT_CONTROL_KEY;
constexpr uint32_t shift = INTERACT_SHIFT_KEY;
constexpr uint32_t alt = INTERACT_ALT_KEY;
constexpr uint32_t command = INTERACT_COMMAND_KEY;
} // namespace

Q_DECLARE_METATYPE(obs_key_t)

class HotkeyFunctionsTest : public QObject {
	Q_OBJECT

	std::optional<ObsSession> obs_{};

private Q_SLOTS:
	void init()
	{
		obs_.emplace();
		registerClipHotkey();
	}
	void cleanup()
	{
		unregisterClipHotkey();
		obs_.reset();
	}

	void usesObsModifierBits()
	{
		QCOMPARE(shift, 2U);
		QCOMPARE(control, 4U);
		QCOMPARE(alt, 8U);
		QCOMPARE(command, 128U);
	}

	void comboTexts_data()
	{
		QTest::addColumn<uint32_t>("modifiers");
		QTest::addColumn<obs_key_t>("key");
		QTest::addColumn<QString>("text");
		QTest::newRow("nothing") << 0U << OBS_KEY_NONE << QString();
		QTest::newRow("a letter") << 0U << OBS_KEY_K << u"K"_s;
		QTest::newRow("Ctrl+Shift+C") << (control | shift) << OBS_KEY_C << u"Ctrl+Shift+C"_s;
		QTest::newRow("all") << (command | shift | alt | control) << OBS_KEY_F5 << u"Ctrl+Alt+Shift+Win+F5"_s;
		QTest::newRow("a modifier alone") << alt << OBS_KEY_NONE << u"Alt"_s;
		QTest::newRow("bits that are no modifier") << (control | 1U | 64U) << OBS_KEY_1 << u"Ctrl+1"_s;
		QTest::newRow("a named key") << 0U << OBS_KEY_PAGEUP << u"PAGEUP"_s;
	}
	void comboTexts()
	{
		QFETCH(uint32_t, modifiers);
		QFETCH(obs_key_t, key);
		QFETCH(QString, text);
		QCOMPARE(hotkeyComboText({modifiers, key}), text);
	}

	void bindingRecords_data()
	{
		QTest::addColumn<uint32_t>("modifiers");
		QTest::addColumn<obs_key_t>("key");
		QTest::addColumn<QByteArray>("name");
		QTest::newRow("Ctrl+Shift+C") << (control | shift) << OBS_KEY_C << QByteArray("OBS_KEY_C");
		QTest::newRow("Alt+F24") << alt << OBS_KEY_F24 << QByteArray("OBS_KEY_F24");
		QTest::newRow("Win+0") << command << OBS_KEY_0 << QByteArray("OBS_KEY_0");
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
		for (const char *member : {"shift", "control", "alt", "command", "key"})
			QVERIFY(obs_data_has_user_value(record, member));
		QCOMPARE(obs_data_get_bool(record, "shift"), (modifiers & shift) != 0);
		QCOMPARE(obs_data_get_bool(record, "control"), (modifiers & control) != 0);
		QCOMPARE(obs_data_get_bool(record, "alt"), (modifiers & alt) != 0);
		QCOMPARE(obs_data_get_bool(record, "command"), (modifiers & command) != 0);
		QCOMPARE(obs_data_get_string(record, "key"), name);
	}

	void aBindingRecordIsWhatObsLoads()
	{
		const obs_hotkey_id id = addForeignHotkey("test.other", "Other", {0, OBS_KEY_A});
		obs_hotkey_load(id, OBSDataArrayAutoRelease(hotkeyComboToData({control | alt, OBS_KEY_F9})));
		QCOMPARE(boundCombinations(id), QStringList{u"12 OBS_KEY_F9"_s});
	}

	void qtKeys_data()
	{
		QTest::addColumn<int>("qtKey");
		QTest::addColumn<QByteArray>("name");

		const auto row = [](int qtKey, const QByteArray &name) {
			QTest::newRow(name.constData()) << qtKey << name;
		};
		for (char letter = 'A'; letter <= 'Z'; ++letter)
			row(letter, QByteArray("OBS_KEY_") + letter);
		for (char digit = '0'; digit <= '9'; ++digit)
			row(digit, QByteArray("OBS_KEY_") + digit);
		for (int number = 1; number <= 24; ++number)
			row(Qt::Key_F1 + number - 1, "OBS_KEY_F" + QByteArray::number(number));
		row(Qt::Key_Space, "OBS_KEY_SPACE");
		row(Qt::Key_Insert, "OBS_KEY_INSERT");
		row(Qt::Key_Pause, "OBS_KEY_PAUSE");
		row(Qt::Key_Home, "OBS_KEY_HOME");
		row(Qt::Key_End, "OBS_KEY_END");
		row(Qt::Key_PageUp, "OBS_KEY_PAGEUP");
		row(Qt::Key_PageDown, "OBS_KEY_PAGEDOWN");
	}
	void qtKeys()
	{
		QFETCH(int, qtKey);
		QFETCH(QByteArray, name);
		const obs_key_t key = obsKeyFromQtKey(qtKey);
		QVERIFY(key != OBS_KEY_NONE);
		QCOMPARE(obs_key_to_name(key), name);
		QCOMPARE(qtKeyToObsKey(QKeyEvent(QEvent::KeyPress, qtKey, Qt::NoModifier)), key);
	}

	void namedKeysHaveTheirCodes()
	{
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_Space)}, 70);
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_Insert)}, 7);
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_Pause)}, 9);
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_Home)}, 13);
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_End)}, 14);
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_PageUp)}, 19);
		QCOMPARE(int{obsKeyFromQtKey(Qt::Key_PageDown)}, 20);
	}

	void unusableQtKeys_data()
	{
		QTest::addColumn<int>("qtKey");
		for (const Qt::Key key :
		     {Qt::Key_Delete,      Qt::Key_Left,   Qt::Key_Up,      Qt::Key_Right,  Qt::Key_Down,
		      Qt::Key_F25,         Qt::Key_F35,    Qt::Key_Escape,  Qt::Key_Return, Qt::Key_Tab,
		      Qt::Key_Plus,        Qt::Key_Comma,  Qt::Key_Slash,   Qt::Key_Colon,  Qt::Key_At,
		      Qt::Key_BracketLeft, Qt::Key_Shift,  Qt::Key_Control, Qt::Key_Alt,    Qt::Key_Meta,
		      Qt::Key_Exclam,      Qt::Key_unknown})
			QTest::addRow("%s", QMetaEnum::fromType<Qt::Key>().valueToKey(key)) << int{key};
		QTest::newRow("a lower-case letter's code") << int{'a'};
		QTest::newRow("no key") << 0;
	}
	void unusableQtKeys()
	{
		QFETCH(int, qtKey);
		QCOMPARE(obsKeyFromQtKey(qtKey), OBS_KEY_NONE);
		QCOMPARE(qtKeyToObsKey(QKeyEvent(QEvent::KeyPress, qtKey, Qt::NoModifier)), OBS_KEY_NONE);
	}

	void thePlatformsOwnCodeComesFirst()
	{
		const int deleteCode = obs_key_to_virtual_key(OBS_KEY_DELETE);
		QVERIFY(deleteCode != 0);
		const QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, 0, static_cast<quint32>(deleteCode),
				      0);
		QCOMPARE(qtKeyToObsKey(press), OBS_KEY_DELETE);
	}

	void modifiers_data()
	{
		QTest::addColumn<Qt::KeyboardModifiers>("qt");
		QTest::addColumn<uint32_t>("obs");
		const auto row = [](const char *name, Qt::KeyboardModifiers qt, uint32_t obs) {
			QTest::newRow(name) << qt << obs;
		};
		row("none", Qt::NoModifier, 0);
		row("control", Qt::ControlModifier, 4);
		row("shift", Qt::ShiftModifier, 2);
		row("alt", Qt::AltModifier, 8);
		row("meta", Qt::MetaModifier, 128);
		row("all", Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier, 142);
		row("keypad is none", Qt::KeypadModifier | Qt::GroupSwitchModifier, 0);
	}
	void modifiers()
	{
		QFETCH(Qt::KeyboardModifiers, qt);
		QFETCH(uint32_t, obs);
		QCOMPARE(obsModifiers(qt), obs);
	}

	void conflictsAreExactMatchesOfOthers()
	{
		bindHotkey(clipHotkeyId(), {{control | shift, OBS_KEY_C}});
		QCOMPARE(hotkeyConflicts({control | shift, OBS_KEY_C}), QStringList());

		addForeignHotkey("test.same", "Start Recording", {control | shift, OBS_KEY_C});
		addForeignHotkey("test.more", "More", {control | shift | alt, OBS_KEY_C});
		addForeignHotkey("test.less", "Less", {control, OBS_KEY_C});
		addForeignHotkey("test.key", "Key", {control | shift, OBS_KEY_D});
		QCOMPARE(hotkeyConflicts({control | shift, OBS_KEY_C}), QStringList{u"Start Recording"_s});

		addForeignHotkey("test.again", "Start Recording", {control | shift, OBS_KEY_C});
		addForeignHotkey("test.umlaut", "Größe %1", {control | shift, OBS_KEY_C});
		QCOMPARE(hotkeyConflicts({control | shift, OBS_KEY_C}),
			 QStringList({u"Start Recording"_s, u"Start Recording"_s, u"Größe %1"_s}));
	}

	void aHotkeyWithoutDescriptionConflictsAsAnEmptyText()
	{
		addForeignHotkey("test.nameless", "", {alt, OBS_KEY_X});
		QCOMPARE(hotkeyConflicts({alt, OBS_KEY_X}), QStringList{QString()});
	}

	void theCurrentTextListsAllBindings()
	{
		QCOMPARE(currentHotkeyText(), QString());
		addForeignHotkey("test.other", "Other", {0, OBS_KEY_A});
		QCOMPARE(currentHotkeyText(), QString());
		bindHotkey(clipHotkeyId(), {{control | shift, OBS_KEY_C}, {0, OBS_KEY_F9}});
		QCOMPARE(currentHotkeyText(), u"Ctrl+Shift+C, F9"_s);
	}

	void theDefaultIsControlShiftC()
	{
		QCOMPARE(hotkeyComboText(defaultCombination()), u"Ctrl+Shift+C"_s);
		QCOMPARE(defaultCombination().modifiers, 6U);
	}

	void textsOfABoundHotkey_data()
	{
		QTest::addColumn<QStringList>("conflicts");
		QTest::addColumn<QString>("text");
		QTest::newRow("no conflict") << QStringList() << u"Hotkey set: Ctrl+%1 (also in Settings → Hotkeys)."_s;
		QTest::newRow("one")
			<< QStringList{u"Start Recording"_s}
			<< u"Hotkey set: Ctrl+%1, but it is also used by \"Start Recording\"; both will fire. "
			   "Pick another with Set hotkey."_s;
		QTest::newRow("two") << QStringList{u"A"_s, u"B"_s}
				     << u"Hotkey set: Ctrl+%1, but it is also used by \"A\", \"B\"; both will fire. "
					"Pick another with Set hotkey."_s;
		QTest::newRow("placeholders")
			<< QStringList{u"%1 %2"_s}
			<< u"Hotkey set: Ctrl+%1, but it is also used by \"%1 %2\"; both will fire. "
			   "Pick another with Set hotkey."_s;
	}
	void textsOfABoundHotkey()
	{
		QFETCH(QStringList, conflicts);
		QFETCH(QString, text);
		QCOMPARE(hotkeySetText(u"Ctrl+%1"_s, conflicts), text);
	}

	void textsOfTheDefaultOffer()
	{
		QCOMPARE(defaultHotkeyText({}), u"Use Ctrl+Shift+C"_s);
		QCOMPARE(defaultHotkeyToolTip({}), u"Suggested default"_s);
		QCOMPARE(defaultHotkeyText({u"A"_s, u"B"_s}), u"Use Ctrl+Shift+C (in use!)"_s);
		QCOMPARE(defaultHotkeyToolTip({u"A"_s, u"B"_s}), u"Warning: Ctrl+Shift+C is already used by A, B"_s);
	}
};

KESTRUNE_TEST(HotkeyFunctionsTest)
#include "functions.moc"
