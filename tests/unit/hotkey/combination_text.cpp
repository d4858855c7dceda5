#include <QTest>

#include "host/hotkey_test.hpp"
#include "host/hotkeys.hpp"
#include "host/test_program.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/combination_text.hpp"

using namespace Qt::StringLiterals;

class CombinationTextTest : public HotkeyTest {
	Q_OBJECT

private Q_SLOTS:
	void comboTexts_data()
	{
		QTest::addColumn<uint32_t>("modifiers");
		QTest::addColumn<obs_key_t>("key");
		QTest::addColumn<QString>("text");
		QTest::newRow("nothing") << 0U << OBS_KEY_NONE << QString();
		QTest::newRow("a letter") << 0U << OBS_KEY_K << u"K"_s;
		QTest::newRow("Ctrl+Shift+C") << (controlKey | shiftKey) << OBS_KEY_C << u"Ctrl+Shift+C"_s;
		QTest::newRow("all") << (commandKey | shiftKey | altKey | controlKey) << OBS_KEY_F5
				     << u"Ctrl+Alt+Shift+Win+F5"_s;
		QTest::newRow("a modifier alone") << altKey << OBS_KEY_NONE << u"Alt"_s;
		QTest::newRow("bits that are no modifier") << (controlKey | 1U | 64U) << OBS_KEY_1 << u"Ctrl+1"_s;
		QTest::newRow("a named key") << 0U << OBS_KEY_PAGEUP << u"PAGEUP"_s;
	}
	void comboTexts()
	{
		QFETCH(uint32_t, modifiers);
		QFETCH(obs_key_t, key);
		QFETCH(QString, text);
		QCOMPARE(hotkeyComboText({modifiers, key}), text);
	}

	void theCurrentTextListsAllBindings()
	{
		QCOMPARE(currentHotkeyText(), QString());
		addForeignHotkey("test.other", "Other", {0, OBS_KEY_A});
		QCOMPARE(currentHotkeyText(), QString());
		bindHotkey(clipHotkeyId(), {{controlKey | shiftKey, OBS_KEY_C}, {0, OBS_KEY_F9}});
		QCOMPARE(currentHotkeyText(), u"Ctrl+Shift+C, F9"_s);
	}

	void theDefaultIsControlShiftC()
	{
		QCOMPARE(hotkeyComboText(defaultCombination()), u"Ctrl+Shift+C"_s);
		QCOMPARE(defaultCombination().modifiers, 6U);
	}
};

KESTRUNE_TEST(CombinationTextTest)
#include "combination_text.moc"
