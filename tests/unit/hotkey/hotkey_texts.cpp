#include <QTest>

#include "host/test_program.hpp"
#include "hotkey/hotkey_texts.hpp"

using namespace Qt::StringLiterals;

class HotkeyTextsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
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

KESTRUNE_TEST(HotkeyTextsTest)
#include "hotkey_texts.moc"
