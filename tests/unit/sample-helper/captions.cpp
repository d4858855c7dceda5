#include "caption_text.hpp"
#include "captions.hpp"
#include "look.hpp"
#include "host/test_program.hpp"

#include <QTest>

class CaptionsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void writes_times();
	void writes_a_line_per_layer();
	void places_captions();
	void keeps_texts_from_being_commands_data();
	void keeps_texts_from_being_commands();
	void breaks_long_words_data();
	void breaks_long_words();
	void sets_long_texts_smaller();
	void cuts_endless_texts_off();
};

namespace {

QString u(const char *text)
{
	return QString::fromUtf8(text);
}

QStringList eventsOf(const char *style, const char *position, const QString &text, const char *font = "inter")
{
	const Look look{QStringLiteral("gameplay"), QLatin1String(style), QLatin1String(font), QLatin1String(position)};
	const QString script = QString::fromUtf8(captionScript(look, {{500, 1250, text}}));
	return script.split(QLatin1Char('\n')).filter(QStringLiteral("Dialogue:"));
}

} // namespace

void CaptionsTest::writes_times()
{
	QCOMPARE(captiontext::time(0), u("0:00:00.00"));
	QCOMPARE(captiontext::time(59'999), u("0:00:59.99"));
	QCOMPARE(captiontext::time(3'723'450), u("1:02:03.45"));
}

void CaptionsTest::writes_a_line_per_layer()
{
	for (const auto &[style, count] : {std::pair{"rune", 1}, {"neon", 2}, {"clean", 1}, {"meme", 1}, {"none", 0}}) {
		QCOMPARE(eventsOf(style, "auto", u("Hi")).size(), count);
	}
	QVERIFY(eventsOf("rune", "auto", u("Hi")).first().startsWith(u("Dialogue: 0,0:00:00.50,0:00:01.25,Layer0,")));
	QVERIFY(eventsOf("neon", "auto", u("Hi")).last().startsWith(u("Dialogue: 1,0:00:00.50,0:00:01.25,Layer1,")));
	QVERIFY(eventsOf("meme", "auto", u("oh é")).first().endsWith(u("}OH É")));
}

void CaptionsTest::places_captions()
{
	for (const auto &[position, y] : {std::pair{"top", 230}, {"middle", 960}, {"bottom", 1651}, {"auto", 1440}}) {
		QVERIFY(eventsOf("clean", position, u("Hi")).first().contains(u("\\pos(540,%1)").arg(y)));
	}
}

void CaptionsTest::keeps_texts_from_being_commands_data()
{
	QTest::addColumn<QString>("text");
	QTest::addColumn<QString>("written");
	QTest::newRow("braces") << u("{\\b1}x") << u("\\{\\\u2060b1\\}x");
	QTest::newRow("open brace") << u("x{") << u("x\\{");
	QTest::newRow("escaped brace") << u("\\{x\\}") << u("\\\u2060\\{x\\\u2060\\}");
	QTest::newRow("escapes") << u("a\\Nb\\h") << u("a\\\u2060Nb\\\u2060h");
	QTest::newRow("lines") << u("a\nb") << u("a\\Nb");
	QTest::newRow("places of arguments") << u("%1 %7 100%") << u("%1 %7 100%");
	QTest::newRow("fields and sections") << u("a,b\n[Events]") << u("a,b\\N[Events]");
}

void CaptionsTest::keeps_texts_from_being_commands()
{
	QFETCH(const QString, text);
	QFETCH(const QString, written);
	QCOMPARE(captiontext::escaped(text), written);
	const QStringList events = eventsOf("clean", "auto", text);
	QCOMPARE(events.size(), 1);
	QVERIFY2(events.first().endsWith(u("}") + written), qPrintable(events.first()));
}

void CaptionsTest::breaks_long_words_data()
{
	QTest::addColumn<QString>("text");
	QTest::addColumn<QString>("broken");
	QTest::newRow("short words") << u("one two three four five") << u("one two three four five");
	QTest::newRow("a long word") << u("oh Rindfleischetikettierung") << u("oh Rindfleischetike\nttierung");
	QTest::newRow("wide letters") << u("日本語日本語日本語") << u("日本語日本語日本\n語");
	QTest::newRow("emoji stay whole") << u("🎮🎮🎮🎮🎮🎮🎮🎮🎮") << u("🎮🎮🎮🎮🎮🎮🎮🎮\n🎮");
}

void CaptionsTest::breaks_long_words()
{
	QFETCH(const QString, text);
	QFETCH(const QString, broken);
	QCOMPARE(captiontext::broken(text), broken);
}

void CaptionsTest::sets_long_texts_smaller()
{
	QCOMPARE(captiontext::scale(u("Hi")), 1.0);
	QCOMPARE(captiontext::scale(QString(64, QLatin1Char('x'))), 1.0);
	QVERIFY(captiontext::scale(QString(65, QLatin1Char('x'))) < 1.0);
	QVERIFY(captiontext::scale(u("a\nb\nc\nd\ne")) < 1.0);
	QCOMPARE(captiontext::scale(QString(10000, QLatin1Char('x'))), 0.5);
}

void CaptionsTest::cuts_endless_texts_off()
{
	const QString endless = captiontext::broken(u("blah ").repeated(1000));
	QVERIFY(endless.size() < 200);
	QVERIFY(endless.endsWith(u("…")));
	QCOMPARE(captiontext::broken(u("a\n").repeated(1000)).count(QLatin1Char('\n')), 5);
	QVERIFY(captiontext::broken(QString(1000, QLatin1Char('x'))).endsWith(u("…")));
}

KESTRUNE_TEST(CaptionsTest)
#include "captions.moc"
