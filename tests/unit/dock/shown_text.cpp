#include <QTest>

#include "dock/shown_text.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ShownTextTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void isWholeUpToTheLimit()
	{
		QCOMPARE(shownText(QString()), QString());
		const QString longest(maxShownText, u'w');
		QCOMPARE(shownText(longest), longest);
	}
	void isCutBeyondTheLimit()
	{
		QCOMPARE(shownText(QString(maxShownText + 1, u'w')), QString(maxShownText, u'w') + u'…');
		const QString letters(maxShownText - 1, u'w');
		QCOMPARE(shownText(letters + u"😀 and more"_s), letters + u'…');
		QCOMPARE(shownText(QString(1 << 20, u'w')).size(), maxShownText + 1);
	}

	void knowsHarmlessMarkup_data()
	{
		QTest::addColumn<QString>("text");
		QTest::addColumn<bool>("harmless");
		QTest::newRow("empty") << QString() << true;
		QTest::newRow("plain") << u"1 < 2 & 3 > 2"_s << true;
		QTest::newRow("bold") << u"<b>bold</b> and <I>italic</I>"_s << true;
		QTest::newRow("line break") << u"one<br>two<br/>three<br />four"_s << true;
		QTest::newRow("entities") << u"<b>&lt;img&gt;</b>"_s << true;
		QTest::newRow("attribute") << u"<b style=\"x\">bold</b>"_s << false;
		QTest::newRow("picture") << u"<img src=x>"_s << false;
		QTest::newRow("table") << u"<table>"_s << false;
		QTest::newRow("link") << u"<a href=\"https://x.example\">x</a>"_s << false;
		QTest::newRow("unfinished") << u"<b>x</b> <img src=x"_s << false;
		QTest::newRow("hidden in another") << u"<b>x</b><<b>img src=x>"_s << false;
		QTest::newRow("comment") << u"<b>x</b><!-- -->"_s << false;
		QTest::newRow("longer name") << u"<body><big>x"_s << false;
	}
	void knowsHarmlessMarkup()
	{
		QFETCH(QString, text);
		QFETCH(bool, harmless);
		QCOMPARE(hasHarmlessMarkup(text), harmless);
	}

	void aTooltipKeepsHarmlessTexts()
	{
		const QString paragraphs = (QString(80, u'w') + u'\n').repeated(40);
		QCOMPARE(shownToolTip(paragraphs), paragraphs);
		QCOMPARE(shownToolTip(QString(maxShownText, u'w')), QString(maxShownText, u'w'));
		QCOMPARE(shownToolTip(u"<b>bold</b>"_s), u"<b>bold</b>"_s);
		QCOMPARE(shownToolTip(u"1 < 2"_s), u"1 < 2"_s);
	}
	void aTooltipCountsTabs()
	{
		const QString lines = u"\t\t\t\t\t\n"_s;
		QCOMPARE(shownToolTip(lines.repeated(100)).count(u'\n'), 100);
		QVERIFY(shownToolTip(lines.repeated(200)).count(u'\n') < 130);
	}
	void aTooltipShowsOtherMarkupAsItIsWritten()
	{
		QCOMPARE(shownToolTip(u"<img src=x>"_s), u"&lt;img src=x&gt;"_s);
	}
	void aTooltipNeedsNoHugeWindow_data()
	{
		QTest::addColumn<QString>("lineBreak");
		for (const QString &lineBreak : {u"\n"_s, u"<br>"_s, u"<BR />"_s, QString(QChar::LineSeparator)}) {
			QTest::newRow(qPrintable(lineBreak)) << lineBreak;
		}
	}
	void aTooltipNeedsNoHugeWindow()
	{
		QFETCH(QString, lineBreak);
		QString text = shownToolTip((QString(60, u'W') + lineBreak).repeated(200));
		QVERIFY(text.endsWith(u'…'));
		const QStringList lines = text.replace(lineBreak, u"\n"_s).split(u'\n');
		QVERIFY(lines.size() > 10);
		QVERIFY(lines.size() * 60 <= 5000);
	}
};

KESTRUNE_TEST(ShownTextTest)
#include "shown_text.moc"
