#include <QRandomGenerator>
#include <QStringEncoder>
#include <QTest>

#include "captions/subtitles.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class SubtitlesTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void readsWhatPeopleHave_data();
	void readsWhatPeopleHave();
	void readsTimes_data();
	void readsTimes();
	void takesMarkupOut_data();
	void takesMarkupOut();
	void readsEveryEncoding_data();
	void readsEveryEncoding();
	void tellsTextFromOtherBytes();
	void shiftsToTheExcerpt();
	void showsOneCueAtATime();
	void survivesAnyBytes();
};

namespace {
QString shown(const QList<Cue> &cues)
{
	QStringList parts{};
	for (const Cue &cue : cues) {
		parts += u"%1-%2 %3"_s.arg(cue.start_ms).arg(cue.end_ms).arg(cue.text);
	}
	return parts.join(u'|');
}

QString parsed(const QByteArray &file)
{
	return shown(parseSubtitles(file));
}
} // namespace

void SubtitlesTest::readsWhatPeopleHave_data()
{
	QTest::addColumn<QByteArray>("file");
	QTest::addColumn<QString>("cues");
	QTest::newRow("nothing") << QByteArray() << u""_s;
	QTest::newRow("SubRip") << QByteArray("1\n00:00:01,000 --> 00:00:02,500\nHi\nthere\n\n"
					      "2\n00:00:03,000 --> 00:00:04,000\nBye\n")
				<< u"1000-2500 Hi\nthere|3000-4000 Bye"_s;
	QTest::newRow("lines of Windows") << QByteArray("1\r\n00:00:01,000 --> 00:00:02,000\r\nHi\r\n\r\n2\r\n"
							"00:00:03,000 --> 00:00:04,000\r\nBye\r\n")
					  << u"1000-2000 Hi|3000-4000 Bye"_s;
	QTest::newRow("lines of old Macs")
		<< QByteArray("1\r00:00:01,000 --> 00:00:02,000\rHi\r\rrest") << u"1000-2000 Hi"_s;
	QTest::newRow("no newline at the end")
		<< QByteArray("1\n00:00:01,000 --> 00:00:02,000\nHi") << u"1000-2000 Hi"_s;
	QTest::newRow("WebVTT") << QByteArray("WEBVTT - a title\nKind: captions\n\nSTYLE\n::cue { color: red }\n\n"
					      "NOTE a remark\nof two lines\n\nintro\n"
					      "00:01.000 --> 00:02.000 align:start line:0%\n<v Ana>Hi</v>\n\n"
					      "01:00:03.000 --> 01:00:04.000\n- Bye\n")
				<< u"1000-2000 Hi|3603000-3604000 - Bye"_s;
	QTest::newRow("no empty line between cues")
		<< QByteArray("1\n00:00:01,000 --> 00:00:02,000\nHi\n2\n00:00:03,000 --> 00:00:04,000\nBye\n")
		<< u"1000-2000 Hi|3000-4000 Bye"_s;
	QTest::newRow("no numbers") << QByteArray("00:00:01,000 --> 00:00:02,000\nHi\n"
						  "00:00:03,000 --> 00:00:04,000\nBye\n")
				    << u"1000-2000 Hi|3000-4000 Bye"_s;
	QTest::newRow("a number that is said") << QByteArray("1\n00:00:01,000 --> 00:00:02,000\n42\n\n"
							     "2\n00:00:03,000 --> 00:00:04,000\nBye\n")
					       << u"1000-2000 42|3000-4000 Bye"_s;
	QTest::newRow("without text") << QByteArray("1\n00:00:01,000 --> 00:00:02,000\n\n2\n"
						    "00:00:03,000 --> 00:00:04,000\n<i></i>\n \n"
						    "00:00:05,000 --> 00:00:06,000")
				      << u""_s;
	QTest::newRow("backwards and empty spans")
		<< QByteArray("00:00:02,000 --> 00:00:01,000\na\n\n00:00:02,000 --> 00:00:02,000\nb\n\n"
			      "00:00:02,000 --> 00:00:02,001\nc\n")
		<< u"2000-2001 c"_s;
	QTest::newRow("in any order") << QByteArray("00:00:05,000 --> 00:00:06,000\nlate\n\n"
						    "00:00:01,000 --> 00:00:02,000\nearly\n")
				      << u"1000-2000 early|5000-6000 late"_s;
	QTest::newRow("broken cues between good ones")
		<< QByteArray("dear diary\n\n1\n00:00:0x,000 --> 00:00:02,000\nbad\n\n"
			      "2\n00:00:01,000 -> 00:00:02,000\nbad\n\n"
			      "3\n00:99:01,000 --> 00:99:02,000\nbad\n\n4\n00:00:61,000 --> 00:00:62,000\nbad\n\n"
			      "5\n-1:00:01,000 --> 00:00:02,000\nbad\n\n6\n00:00:03,000 --> 00:00:04,000\ngood\n")
		<< u"3000-4000 good"_s;
}

void SubtitlesTest::readsWhatPeopleHave()
{
	QFETCH(const QByteArray, file);
	QFETCH(const QString, cues);
	QCOMPARE(parsed(file), cues);
}

void SubtitlesTest::readsTimes_data()
{
	QTest::addColumn<QByteArray>("time");
	QTest::addColumn<qint64>("milliseconds");
	QTest::newRow("comma") << QByteArray("01:02:03,456") << qint64{3723456};
	QTest::newRow("point") << QByteArray("01:02:03.456") << qint64{3723456};
	QTest::newRow("one digit each") << QByteArray("1:2:3,4") << qint64{3723400};
	QTest::newRow("two digits of a fraction") << QByteArray("00:00:00,05") << qint64{50};
	QTest::newRow("without hours") << QByteArray("59:59.999") << qint64{3599999};
	QTest::newRow("many hours") << QByteArray("998:00:00,000") << qint64{998LL * 3600000};
}

void SubtitlesTest::readsTimes()
{
	QFETCH(const QByteArray, time);
	QFETCH(const qint64, milliseconds);
	const QList<Cue> cues = parseSubtitles("  " + time + "-->\t999:00:00,000  \nHi\n");
	QCOMPARE(cues.size(), 1);
	QCOMPARE(cues.first().start_ms, milliseconds);
}

void SubtitlesTest::takesMarkupOut_data()
{
	QTest::addColumn<QByteArray>("line");
	QTest::addColumn<QString>("text");
	QTest::newRow("tags") << QByteArray("<i>a</i> <b>b</B><font color=\"#ff0000\">c</font>") << u"a bc"_s;
	QTest::newRow("voices and classes") << QByteArray("<v.loud Ana Lee>Hi <c.red>you</c>") << u"Hi you"_s;
	QTest::newRow("times inside") << QByteArray("one <00:00:01.500>two") << u"one two"_s;
	QTest::newRow("override commands") << QByteArray("{\\an8}{\\pos(1,2)\\fs90}up") << u"up"_s;
	QTest::newRow("entities") << QByteArray("a &lt;b&gt; &amp;amp; c&nbsp;d&lrm;")
				  << u"a <b> &amp; cd"_s.replace(u"cd"_s, u"c d"_s);
	QTest::newRow("hearts and comparisons")
		<< QByteArray("<3 a < b > c {braces} \\N") << u"<3 a < b > c {braces} \\N"_s;
	QTest::newRow("unclosed") << QByteArray("<i a {\\p1 b") << u"<i a {\\p1 b"_s;
	QTest::newRow("blanks and control characters") << QByteArray(" a\t\x01 b\x7f\xc2\x85 c ") << u"a b c"_s;
	QTest::newRow("foreign letters") << QByteArray("日本 🎮 é") << u"日本 🎮 é"_s;
}

void SubtitlesTest::takesMarkupOut()
{
	QFETCH(const QByteArray, line);
	QFETCH(const QString, text);
	QCOMPARE(parsed("00:00:01,000 --> 00:00:02,000\n" + line + "\n"), u"1000-2000 "_s + text);
}

void SubtitlesTest::readsEveryEncoding_data()
{
	const QString file = u"1\n00:00:01,000 --> 00:00:02,000\nété\n"_s;
	const auto encoded = [&file](QStringConverter::Encoding encoding) -> QByteArray {
		return QStringEncoder(encoding, QStringConverter::Flag::WriteBom).encode(file);
	};
	QTest::addColumn<QByteArray>("file");
	QTest::newRow("UTF-8") << file.toUtf8();
	QTest::newRow("UTF-8 with a mark") << encoded(QStringConverter::Utf8);
	QTest::newRow("UTF-16, little end first") << encoded(QStringConverter::Utf16LE);
	QTest::newRow("UTF-16, big end first") << encoded(QStringConverter::Utf16BE);
	QTest::newRow("Latin-1") << file.toLatin1();
}

void SubtitlesTest::readsEveryEncoding()
{
	QFETCH(const QByteArray, file);
	QCOMPARE(parsed(file), u"1000-2000 été"_s);
	QVERIFY(isText(file));
}

void SubtitlesTest::tellsTextFromOtherBytes()
{
	QVERIFY(isText(""));
	QVERIFY(!isText(QByteArray("\x1a\x45\xdf\xa3\x00\x01", 6)));
	QVERIFY(!isText(QByteArray(100, '\0')));
}

void SubtitlesTest::shiftsToTheExcerpt()
{
	const QList<Cue> cues{{0, 900, u"before"_s},     {900, 1000, u"until"_s},   {950, 1500, u"across"_s},
			      {1600, 1700, u"inside"_s}, {1900, 9000, u"beyond"_s}, {2000, 2100, u"from"_s},
			      {9000, 9100, u"far"_s}};
	QCOMPARE(shown(cuesWithin(cues, 1000, 2000)), u"0-500 across|600-700 inside|900-1000 beyond"_s);
	QCOMPARE(shown(cuesWithin({}, 0, 1000)), u""_s);
}

void SubtitlesTest::showsOneCueAtATime()
{
	const QList<Cue> cues{{0, 5000, u"a"_s}, {1000, 2000, u"b"_s}, {1000, 3000, u"c"_s}, {2500, 2600, u"d"_s}};
	QCOMPARE(shown(cuesWithin(cues, 0, 9000)), u"0-1000 a|1000-2500 b\nc|2500-2600 d"_s);
	QCOMPARE(shown(cuesWithin(cues, 1500, 9000)), u"0-1000 a\nb\nc|1000-1100 d"_s);
}

void SubtitlesTest::survivesAnyBytes()
{
	QRandomGenerator random(20);
	const QByteArray sample = "1\n00:00:01,000 --> 00:00:02,500\n<i>Hi</i> {\\an8}\n\n"
				  "WEBVTT\n\n00:01.000 --> 00:04.000\n&lt;Bye&amp;\n";
	for (int round = 0; round < 3000; ++round) {
		QByteArray file = sample.repeated(1 + round % 3);
		for (int i = 0; i < 1 + round % 12; ++i) {
			const qsizetype at = random.bounded(static_cast<int>(file.size()));
			file[at] = static_cast<char>(random.bounded(256));
			file.remove(random.bounded(static_cast<int>(file.size())), random.bounded(3));
		}
		qint64 end = 0;
		for (const Cue &cue : cuesWithin(parseSubtitles(file), 500, 3500)) {
			QVERIFY(cue.start_ms >= end && cue.start_ms < cue.end_ms && cue.end_ms <= 3000);
			QVERIFY(!cue.text.trimmed().isEmpty() && !cue.text.contains(QChar::Null));
			end = cue.end_ms;
		}
	}
}

KESTRUNE_TEST(SubtitlesTest)
#include "subtitles.moc"
