#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include "captions/caption_text.hpp"
#include "captions/phrases.hpp"
#include "host/test_program.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

/// The rules by which words become captions.
class PhrasesTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void groupsWords_data();
	void groupsWords();
	void timesPhrases_data();
	void timesPhrases();
	void keepsTheRulesForAnySpeech();
	void groupsAnHourWithoutPunctuation();
};

namespace {
/// Words said one after the other from `start_ms` on, each letter in the same time.
QList<Word> said(const QString &text, qint64 start_ms = 0, qint64 letter_ms = 60)
{
	QList<Word> words{};
	for (const QString &word : text.split(u' ')) {
		const qint64 end_ms = start_ms + letter_ms * word.size();
		words += Word{start_ms, end_ms, word};
		start_ms = end_ms + letter_ms;
	}
	return words;
}

QString texts(const QList<Cue> &cues)
{
	QStringList result{};
	for (const Cue &cue : cues) {
		result += cue.text;
	}
	return result.join(u'|').replace(u'\n', u'/');
}

QString times(const QList<Cue> &cues)
{
	QStringList result{};
	for (const Cue &cue : cues) {
		result += u"%1-%2"_s.arg(cue.start_ms).arg(cue.end_ms);
	}
	return result.join(u' ');
}
} // namespace

void PhrasesTest::groupsWords_data()
{
	QTest::addColumn<QList<Word>>("words");
	QTest::addColumn<QString>("phrases");
	QTest::newRow("nothing") << QList<Word>() << u""_s;
	QTest::newRow("one line") << said(u"Nice shot there."_s) << u"Nice shot there."_s;
	QTest::newRow("two lines of about the same width")
		<< said(u"We won that round again"_s) << u"We won that/round again"_s;
	QTest::newRow("no more than two lines") << said(u"I did not see that coming at all from over there"_s)
						<< u"I did not see/that coming|at all from/over there"_s;
	QTest::newRow("each sentence by itself")
		<< said(u"He is behind us. Watch out for him!"_s) << u"He is behind us.|Watch out/for him!"_s;
	QTest::newRow("behind a comma rather than in the middle")
		<< said(u"If he comes again, we run up to the roof"_s) << u"If he comes/again,|we run up/to the roof"_s;
	QTest::newRow("short sentences together") << said(u"Yes. No. Go on."_s) << u"Yes. No. Go on."_s;
	QTest::newRow("a quotation mark behind the full stop") << said(u"He said \"stop right now.\" So we stopped."_s)
							       << u"He said \"stop/right now.\"|So we stopped."_s;
	QTest::newRow("a pause ends a phrase")
		<< said(u"And then"_s) + said(u"he jumped"_s, 1500) << u"And then|he jumped"_s;
	QTest::newRow("a long word stays whole")
		<< said(u"Das war Rindfleischetikettierung heute"_s) << u"Das war|Rindfleischetikettierung|heute"_s;
	QTest::newRow("a sentence without blanks")
		<< QList<Word>{{0, 4000, u"今日はとても天気がいいですね公園に行きましょう"_s}}
		<< u"今日はとても天気がいいですね公園|に行きましょう"_s;
}

void PhrasesTest::groupsWords()
{
	QFETCH(const QList<Word>, words);
	QFETCH(const QString, phrases);
	QCOMPARE(texts(phrases::phrasesOf(words, 60000)), phrases);
}

void PhrasesTest::timesPhrases_data()
{
	QTest::addColumn<QList<Word>>("words");
	QTest::addColumn<QString>("spans");
	QTest::newRow("as long as it is said") << QList<Word>{{500, 2500, u"Slowly"_s}} << u"500-2500"_s;
	QTest::newRow("at least five sixths of a second") << QList<Word>{{500, 600, u"No!"_s}} << u"500-1333"_s;
	QTest::newRow("as long as it takes to read")
		<< QList<Word>{{0, 300, u"Rindfleischetikettierungsgesetz."_s}} << u"0-1882"_s;
	QTest::newRow("at most seven seconds") << QList<Word>{{0, 9000, u"Aaaaah"_s}} << u"0-7000"_s;
	QTest::newRow("a short silence is filled up to the gap")
		<< QList<Word>{{0, 1500, u"One."_s}, {1900, 3500, u"Two."_s}} << u"0-1820 1900-3500"_s;
	QTest::newRow("a long silence shows nothing")
		<< QList<Word>{{0, 1500, u"One."_s}, {2100, 3500, u"Two."_s}} << u"0-1500 2100-3500"_s;
	QTest::newRow("reading time ends where the next phrase begins")
		<< QList<Word>{{0, 900, u"Rindfleischetikettierungsgesetz."_s}, {1000, 2500, u"Two."_s}}
		<< u"0-920 1000-2500"_s;
	QTest::newRow("what is too short makes the next one late")
		<< QList<Word>{{0, 100, u"Rindfleischetikettierung."_s}, {100, 2500, u"Überwachung."_s}}
		<< u"0-833 913-2500"_s;
	QTest::newRow("not beyond the end of the clip") << QList<Word>{{9800, 9900, u"Bye."_s}} << u"9800-10000"_s;
	QTest::newRow("nothing behind the end of the clip") << QList<Word>{{10000, 10500, u"Bye."_s}} << u""_s;
	QTest::newRow("times that run backwards")
		<< QList<Word>{{2000, 4000, u"One"_s}, {1000, 1500, u"two"_s}} << u"2000-4000"_s;
}

void PhrasesTest::timesPhrases()
{
	QFETCH(const QList<Word>, words);
	QFETCH(const QString, spans);
	QCOMPARE(times(phrases::phrasesOf(words, 10000)), spans);
}

void PhrasesTest::keepsTheRulesForAnySpeech()
{
	QRandomGenerator random(30);
	const QStringList ends{u""_s, u""_s, u""_s, u","_s, u"."_s, u"?"_s};
	for (int round = 0; round < 1000; ++round) {
		QList<Word> words{};
		qint64 now_ms = 0;
		while (now_ms < 30000) {
			const QString text = QString(1 + random.bounded(12), u'x') +
					     ends[random.bounded(static_cast<int>(ends.size()))];
			const qint64 end_ms = now_ms + random.bounded(40, 90) * text.size();
			words += Word{now_ms, end_ms, text};
			now_ms = end_ms + (random.bounded(8) == 0 ? random.bounded(1500) : 20);
		}
		qint64 free_ms = 0;
		QStringList shown{};
		for (const Cue &cue : phrases::phrasesOf(words, 30000)) {
			const QString context =
				u"round %1, %2-%3 %4"_s.arg(round).arg(cue.start_ms).arg(cue.end_ms).arg(cue.text);
			const qint64 time_ms = cue.end_ms - cue.start_ms;
			QVERIFY2(cue.start_ms >= free_ms && cue.end_ms <= 30000, qPrintable(context));
			QVERIFY2(time_ms <= phrases::longest_ms, qPrintable(context));
			QVERIFY2(time_ms >= phrases::shortest_ms || cue.end_ms == 30000, qPrintable(context));
			const QStringList lines = cue.text.split(u'\n');
			QVERIFY2(lines.size() <= phrases::maxLines, qPrintable(context));
			for (const QString &line : lines) {
				QVERIFY2(captiontext::widthOf(line) <= captiontext::lineWidth, qPrintable(context));
			}
			free_ms = cue.end_ms + phrases::gap_ms;
			shown += cue.text.split(QRegularExpression(u"\\s"_s));
		}
		QStringList spoken{};
		for (const Word &word : words) {
			spoken += word.text;
		}
		// The end of the clip may cut the last words off.
		QCOMPARE(shown, spoken.first(shown.size()));
		QVERIFY(spoken.size() - shown.size() <= 6);
	}
}

void PhrasesTest::groupsAnHourWithoutPunctuation()
{
	QList<Word> words{};
	for (int i = 0; i < 20000; ++i) {
		words += Word{i * 150LL, i * 150LL + 140, u"blah"_s};
	}
	// Work that grew with the square of the words would not end within the time limit.
	QVERIFY(phrases::phrasesOf(words, 3'600'000).size() > 1000);
}

KESTRUNE_TEST(PhrasesTest)
#include "phrases.moc"
