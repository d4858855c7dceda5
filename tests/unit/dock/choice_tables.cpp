#include <QComboBox>
#include <QTest>

#include "dock/choice_tables.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ChoiceTablesTest : public QObject {
	Q_OBJECT

	static QStringList entries(const QComboBox &box)
	{
		QStringList list;
		for (int index = 0; index < box.count(); ++index) {
			list << box.itemData(index).toString() + u'=' + box.itemText(index);
		}
		return list;
	}

private Q_SLOTS:
	void displayNames_data()
	{
		QTest::addColumn<QString>("key");
		QTest::addColumn<QString>("layout");
		QTest::addColumn<QString>("style");
		QTest::newRow("vtuber") << u"vtuber"_s << u"Face panel"_s << u"vtuber"_s;
		QTest::newRow("rune") << u"rune"_s << u"rune"_s << u"Rune"_s;
		QTest::newRow("neonx") << u"neonx"_s << u"neonx"_s << u"neonx"_s;
		QTest::newRow("another case") << u"Neon"_s << u"Neon"_s << u"Neon"_s;
		QTest::newRow("NEON") << u"NEON"_s << u"NEON"_s << u"NEON"_s;
		QTest::newRow("empty") << QString() << QString() << QString();
	}
	void displayNames()
	{
		QFETCH(QString, key);
		QFETCH(QString, layout);
		QFETCH(QString, style);
		QCOMPARE(displayName(layoutTable, key), layout);
		QCOMPARE(displayName(styleTable, key), style);
	}

	void fillingReplacesTheEntries()
	{
		QComboBox box;
		box.addItems({u"x"_s, u"y"_s});
		box.setCurrentIndex(1);
		fillChoices(&box, fontTable);
		QCOMPARE(entries(box), QStringList({u"bebas=Bebas Neue"_s, u"montserrat=Montserrat"_s, u"inter=Inter"_s,
						    u"bangers=Bangers"_s}));
		QCOMPARE(box.currentIndex(), 0);
		QCOMPARE(box.itemData(0).typeId(), QMetaType::QString);
	}

	void selectingByKey_data()
	{
		QTest::addColumn<QString>("key");
		QTest::addColumn<int>("index");
		QTest::newRow("there") << u"podcast"_s << 3;
		QTest::newRow("not there") << u"cinema"_s << 1;
		QTest::newRow("another case") << u"Podcast"_s << 1;
		QTest::newRow("part of a key") << u"pod"_s << 1;
		QTest::newRow("empty") << QString() << 1;
	}
	void selectingByKey()
	{
		QFETCH(QString, key);
		QFETCH(int, index);
		QComboBox box;
		fillChoices(&box, layoutTable);
		box.setCurrentIndex(1);
		selectByKey(&box, key);
		QCOMPARE(box.currentIndex(), index);
	}

	void anEmptyKeyNeverSelectsAnEmptyEntry()
	{
		QComboBox box;
		box.addItem(u"a"_s, u"a"_s);
		box.addItem(u"empty"_s, QString());
		selectByKey(&box, QString());
		QCOMPARE(box.currentIndex(), 0);
	}

	void refilling_data()
	{
		QTest::addColumn<QStringList>("keys");
		QTest::addColumn<QString>("desired");
		QTest::addColumn<QString>("selected");
		QTest::newRow("nothing offered") << QStringList() << u"inter"_s << u"montserrat"_s;
		QTest::newRow("desired") << QStringList{u"inter"_s, u"montserrat"_s, u"x"_s} << u"x"_s << u"x"_s;
		QTest::newRow("desired is missing") << QStringList{u"inter"_s, u"montserrat"_s} << u"x"_s << u"inter"_s;
		QTest::newRow("none desired: the one before")
			<< QStringList{u"inter"_s, u"montserrat"_s} << QString() << u"montserrat"_s;
		QTest::newRow("none desired, the one before is missing")
			<< QStringList{u"inter"_s, u"bebas"_s} << QString() << u"inter"_s;
	}
	void refilling()
	{
		QFETCH(QStringList, keys);
		QFETCH(QString, desired);
		QFETCH(QString, selected);
		QComboBox box;
		fillChoices(&box, fontTable);
		box.setCurrentIndex(1);
		refillChoices(&box, fontTable, keys, desired);
		QCOMPARE(currentKey(&box), selected);
		QCOMPARE(box.count(), keys.isEmpty() ? 4 : keys.size());
	}

	void theCurrentKeyOfAnEmptyBoxIsEmpty()
	{
		const QComboBox box;
		QCOMPARE(currentKey(&box), QString());
	}
};

KESTRUNE_TEST(ChoiceTablesTest)
#include "choice_tables.moc"
