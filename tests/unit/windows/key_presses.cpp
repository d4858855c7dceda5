#include <QPushButton>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"
#include "pressed_keys.hpp"

/// Keys pressed for all programs, which libobs's own thread looks for.
class KeyPressesTest : public DockTest {
	Q_OBJECT

	/// Loads the module, ready to clip, and binds the clip hotkey.
	bool loadBound(const obs_key_combination &combination)
	{
		if (!loadReady()) {
			return false;
		}
		bindHotkey(findHotkey("kestrune.clip_that")->id, {combination});
		return true;
	}

private Q_SLOTS:
	void aPressClipsOnce_data()
	{
		QTest::addColumn<obs_key_combination>("combination");
		QTest::addColumn<QList<quint16>>("keys");
		const auto row = [](const char *name, uint32_t modifiers, obs_key_t key, const QList<quint16> &keys) {
			QTest::newRow(name) << obs_key_combination{modifiers, key} << keys;
		};
		row("Ctrl+Shift+C", controlKey | shiftKey, OBS_KEY_C, {VK_CONTROL, VK_SHIFT, 'C'});
		row("Alt+F9", altKey, OBS_KEY_F9, {VK_MENU, VK_F9});
		row("F24", 0, OBS_KEY_F24, {VK_F24});
		row("a digit of the keypad", 0, OBS_KEY_NUM7, {VK_NUMPAD7});
	}
	void aPressClipsOnce()
	{
		QFETCH(obs_key_combination, combination);
		QFETCH(QList<quint16>, keys);
		QVERIFY(loadBound(combination));
		{
			const PressedKeys pressed({keys.begin(), keys.end()});
			QTRY_COMPARE(frontend().saveRequests, 1);
			QTest::qWait(300); // libobs looks every 25 ms: a key held down is one press
		}
		QCOMPARE(frontend().saveRequests, 1);
	}

	void aPressWithoutTheModifiersIsAnother()
	{
		QVERIFY(loadBound({controlKey | shiftKey, OBS_KEY_C}));
		{
			const PressedKeys pressed({VK_CONTROL, 'C'});
			QTest::qWait(300);
		}
		QCOMPARE(frontend().saveRequests, 0);
		const PressedKeys pressed({VK_CONTROL, VK_SHIFT, 'C'});
		QTRY_COMPARE(frontend().saveRequests, 1);
	}

	void thePressIsSeenWhileTheUserInterfaceIsBusy()
	{
		QVERIFY(loadBound({0, OBS_KEY_F9}));
		{
			const PressedKeys pressed({VK_F9});
			QTest::qSleep(500);
		}
		QCOMPARE(frontend().saveRequests, 0);
		QTRY_COMPARE(frontend().saveRequests, 1);
	}
};

KESTRUNE_TEST(KeyPressesTest)
#include "key_presses.moc"
