#include <QKeyEvent>
#include <QMetaEnum>
#include <QTest>

#include "host/hotkey_test.hpp"
#include "host/test_program.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/key_translation.hpp"

using namespace Qt::StringLiterals;

class KeyTranslationTest : public HotkeyTest {
	Q_OBJECT

private Q_SLOTS:
	void qtKeys_data()
	{
		QTest::addColumn<int>("qtKey");
		QTest::addColumn<QByteArray>("name");

		const auto row = [](int qtKey, const QByteArray &name) {
			QTest::newRow(name.constData()) << qtKey << name;
		};
		for (char letter = 'A'; letter <= 'Z'; ++letter) {
			row(letter, QByteArray("OBS_KEY_") + letter);
		}
		for (char digit = '0'; digit <= '9'; ++digit) {
			row(digit, QByteArray("OBS_KEY_") + digit);
		}
		for (int number = 1; number <= 24; ++number) {
			row(Qt::Key_F1 + number - 1, "OBS_KEY_F" + QByteArray::number(number));
		}
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
		      Qt::Key_Exclam,      Qt::Key_unknown}) {
			QTest::addRow("%s", QMetaEnum::fromType<Qt::Key>().valueToKey(key)) << int{key};
		}
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
};

KESTRUNE_TEST(KeyTranslationTest)
#include "key_translation.moc"
