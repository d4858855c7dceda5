#include <QTest>

#include "captions/caption_text.hpp"
#include "captions/captions.hpp"
#include "host/test_program.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

class CaptionsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void writesTimes();
	void writesALinePerLayer();
	void placesCaptions();
	void keepsTextsFromBeingCommands_data();
	void keepsTextsFromBeingCommands();
	void breaksLongWords_data();
	void breaksLongWords();
	void setsLongTextsSmaller();
	void setsSmallLettersLarger();
	void cutsEndlessTextsOff();
};

namespace {
QStringList eventsOf(const char *style, const char *position, const QString &text, const char *font = "inter")
{
	const Look look{u"gameplay"_s, QLatin1String(style), QLatin1String(font), QLatin1String(position)};
	const QString script = QString::fromUtf8(captionScript(look, {{500, 1250, text}}));
	return script.split(u'\n').filter(u"Dialogue:"_s);
}
} // namespace

void CaptionsTest::writesTimes()
{
	QCOMPARE(captiontext::formatTime(0), u"0:00:00.00"_s);
	QCOMPARE(captiontext::formatTime(59'999), u"0:00:59.99"_s);
	QCOMPARE(captiontext::formatTime(3'723'450), u"1:02:03.45"_s);
}

void CaptionsTest::writesALinePerLayer()
{
	for (const auto &[style, count] : {std::pair{"rune", 1}, {"neon", 2}, {"clean", 1}, {"meme", 1}, {"none", 0}}) {
		QCOMPARE(eventsOf(style, "auto", u"Hi"_s).size(), count);
	}
	QVERIFY(eventsOf("rune", "auto", u"Hi"_s).first().startsWith(u"Dialogue: 0,0:00:00.50,0:00:01.25,Layer0,"_s));
	QVERIFY(eventsOf("neon", "auto", u"Hi"_s).last().startsWith(u"Dialogue: 1,0:00:00.50,0:00:01.25,Layer1,"_s));
	QVERIFY(eventsOf("meme", "auto", u"oh é"_s).first().endsWith(u"}OH É"_s));
}

void CaptionsTest::placesCaptions()
{
	for (const auto &[position, y] : {std::pair{"top", 230}, {"middle", 960}, {"bottom", 1651}, {"auto", 1440}}) {
		QVERIFY(eventsOf("clean", position, u"Hi"_s).first().contains(u"\\pos(540,%1)"_s.arg(y)));
	}
}

void CaptionsTest::keepsTextsFromBeingCommands_data()
{
	QTest::addColumn<QString>("text");
	QTest::addColumn<QString>("written");
	QTest::newRow("braces") << u"{\\b1}x"_s << u"\\{\\\u2060b1\\}x"_s;
	QTest::newRow("open brace") << u"x{"_s << u"x\\{"_s;
	QTest::newRow("escaped brace") << u"\\{x\\}"_s << u"\\\u2060\\{x\\\u2060\\}"_s;
	QTest::newRow("escapes") << u"a\\Nb\\h"_s << u"a\\\u2060Nb\\\u2060h"_s;
	QTest::newRow("lines") << u"a\nb"_s << u"a\\Nb"_s;
	QTest::newRow("places of arguments") << u"%1 %7 100%"_s << u"%1 %7 100%"_s;
	QTest::newRow("other ends of lines") << u"a\rDialogue: b\r\nc\u0085d"_s << u"a Dialogue: b \\Nc d"_s;
	QTest::newRow("the end of a script") << u"a\0b"_s << u"a b"_s;
	QTest::newRow("fields and sections") << u"a,b\n[Events]"_s << u"a,b\\N[Events]"_s;
}

void CaptionsTest::keepsTextsFromBeingCommands()
{
	QFETCH(const QString, text);
	QFETCH(const QString, written);
	QCOMPARE(captiontext::escape(text), written);
	const QStringList events = eventsOf("clean", "auto", text);
	QCOMPARE(events.size(), 1);
	QVERIFY2(events.first().endsWith(u"}"_s + written), qPrintable(events.first()));
}

void CaptionsTest::breaksLongWords_data()
{
	QTest::addColumn<QString>("text");
	QTest::addColumn<QString>("broken");
	QTest::newRow("short words") << u"one two three four five"_s << u"one two three four five"_s;
	QTest::newRow("a long word") << u"oh Rindfleischetikettierung"_s << u"oh Rindfleischetike\nttierung"_s;
	QTest::newRow("wide letters") << u"日本語日本語日本語"_s << u"日本語日本語日本\n語"_s;
	QTest::newRow("emoji stay whole") << u"🎮🎮🎮🎮🎮🎮🎮🎮🎮"_s << u"🎮🎮🎮🎮🎮🎮🎮🎮\n🎮"_s;
}

void CaptionsTest::breaksLongWords()
{
	QFETCH(const QString, text);
	QFETCH(const QString, broken);
	QCOMPARE(captiontext::breakLines(text), broken);
}

void CaptionsTest::setsLongTextsSmaller()
{
	QCOMPARE(captiontext::fontScale(u"Hi"_s), 1.0);
	QCOMPARE(captiontext::fontScale(QString(64, u'x')), 1.0);
	QVERIFY(captiontext::fontScale(QString(65, u'x')) < 1.0);
	QVERIFY(captiontext::fontScale(u"a\nb\nc\nd\ne"_s) < 1.0);
	QCOMPARE(captiontext::fontScale(QString(10000, u'x')), 0.5);
}

void CaptionsTest::setsSmallLettersLarger()
{
	QVERIFY(eventsOf("meme", "auto", u"Hi"_s, "inter").first().contains(u"\\fs100}"_s));
	QVERIFY(eventsOf("meme", "auto", u"Hi"_s, "bangers").first().contains(u"\\fs140}"_s));
}

void CaptionsTest::cutsEndlessTextsOff()
{
	const QString endless = captiontext::breakLines(u"blah "_s.repeated(1000));
	QVERIFY(endless.size() < 200);
	QVERIFY(endless.endsWith(u"…"_s));
	QCOMPARE(captiontext::breakLines(u"a\n"_s.repeated(1000)).count(u'\n'), 5);
	QVERIFY(captiontext::breakLines(QString(1000, u'x')).endsWith(u"…"_s));
}

KESTRUNE_TEST(CaptionsTest)
#include "captions.moc"
