#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include "captions/spoken_words.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

/// The answers in whisper_answers/ were recorded from whisper.cpp 1.9.5, which took the times from synthetic speech and
/// the words from a model that always says the same: see made_model.hpp.
class SpokenWordsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void readsRecordedAnswers();
	void readsLanguagesWithoutBlanks();
	void toleratesHalfLetters();
	void leavesOutWhatIsNoSpeech_data();
	void leavesOutWhatIsNoSpeech();
	void makesPhrasesOfRecordedAnswers();
	void refusesOtherAnswers_data();
	void refusesOtherAnswers();
	void survivesAnyBytes();
};

namespace {
QByteArray recorded(const QString &name)
{
	QFile file(u"" SOURCE_FOLDER "/tests/unit/sample-helper/captions/whisper_answers/"_s + name);
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString shown(const std::optional<QList<Word>> &words)
{
	QStringList result{};
	for (const Word &word : words.value_or(QList<Word>{{0, 0, u"no answer"_s}})) {
		result += u"%1-%2 %3"_s.arg(word.start_ms).arg(word.end_ms).arg(word.text);
	}
	return result.join(u'|');
}

/// An answer with a segment of one second and without times for each word.
QByteArray answerOf(const QByteArray &text)
{
	return R"({"transcription":[{"offsets":{"from":1000,"to":2000},"text":")" + text + R"("}]})";
}
} // namespace

void SpokenWordsTest::readsRecordedAnswers()
{
	QCOMPARE(shown(spokenWords(recorded(u"words.json"_s))),
		 u"0-140 And|210-330 so|330-450 my|460-860 fellow|860-1600 streamers,|1600-1720 we|1730-1920 won|"
		 "1930-2120 that|2230-2530 round|2530-2890 again.|3400-3490 Did|3490-3780 you|3780-4070 see|"
		 "4070-4580 it?"_s);
}

void SpokenWordsTest::readsLanguagesWithoutBlanks()
{
	QCOMPARE(shown(spokenWords(recorded(u"split-letters.json"_s))).section(u'|', 0, 0),
		 u"0-5000 今日はとても天気がいいですね公園に行きましょう。"_s);
}

void SpokenWordsTest::toleratesHalfLetters()
{
	// Older versions write each token as it is, in the middle of a letter.
	const QByteArray answer = R"({"transcription":[{"offsets":{"from":0,"to":1000},"text":" 今日 é","tokens":[)"
				  "{\"text\":\" \xe4\xbb\",\"offsets\":{\"from\":0,\"to\":300}},"
				  "{\"text\":\"\x8a\xe6\x97\xa5\",\"offsets\":{\"from\":300,\"to\":600}},"
				  "{\"text\":\" \xc3\xa9\",\"offsets\":{\"from\":700,\"to\":900}}]}]}";
	QCOMPARE(shown(spokenWords(answer)), u"0-600 今日|700-900 é"_s);
}

void SpokenWordsTest::leavesOutWhatIsNoSpeech_data()
{
	QTest::addColumn<QByteArray>("text");
	QTest::addColumn<QString>("words");
	QTest::newRow("silence") << QByteArray(" [BLANK_AUDIO]") << u""_s;
	QTest::newRow("music") << QByteArray(" (soft music)") << u""_s;
	QTest::newRow("notes") << QByteArray(" ♪ ♪") << u""_s;
	QTest::newRow("stars") << QByteArray(" *sighs*") << u""_s;
	QTest::newRow("nothing") << QByteArray("") << u""_s;
	QTest::newRow("speech with brackets")
		<< QByteArray(" (well) so (no)") << u"1000-1500 (well)|1500-1667 so|1667-2000 (no)"_s;
}

void SpokenWordsTest::leavesOutWhatIsNoSpeech()
{
	QFETCH(const QByteArray, text);
	QFETCH(const QString, words);
	QCOMPARE(shown(spokenWords(answerOf(text))), words);
}

void SpokenWordsTest::makesPhrasesOfRecordedAnswers()
{
	const std::optional<QList<Word>> words = spokenWords(recorded(u"words.json"_s));
	QVERIFY(words);
	const QList<Cue> cues = phrases::phrasesOf(*words, 6000);
	const QList<Cue> expected{{0, 1520, u"And so my fellow\nstreamers,"_s},
				  {1600, 3320, u"we won that\nround again."_s},
				  {3400, 4580, u"Did you see it?"_s}};
	QCOMPARE(cues.size(), expected.size());
	for (qsizetype i = 0; i < cues.size(); ++i) {
		QCOMPARE(cues[i].text, expected[i].text);
		QCOMPARE(cues[i].start_ms, expected[i].start_ms);
		QCOMPARE(cues[i].end_ms, expected[i].end_ms);
	}
}

void SpokenWordsTest::refusesOtherAnswers_data()
{
	QTest::addColumn<QByteArray>("answer");
	QTest::newRow("nothing") << QByteArray();
	QTest::newRow("half of one") << recorded(u"words.json"_s).first(2000);
	QTest::newRow("another object") << QByteArray("{\"text\":\"Hello\"}");
	QTest::newRow("another type") << QByteArray("{\"transcription\":\"Hello\"}");
}

void SpokenWordsTest::refusesOtherAnswers()
{
	QFETCH(const QByteArray, answer);
	QVERIFY(!spokenWords(answer));
}

void SpokenWordsTest::survivesAnyBytes()
{
	const QByteArray sample = recorded(u"words.json"_s);
	QVERIFY(!sample.isEmpty());
	QRandomGenerator random(7);
	for (int round = 0; round < 500; ++round) {
		QByteArray answer = sample;
		for (int i = 0; i < 1 + round % 20; ++i) {
			answer[random.bounded(static_cast<int>(answer.size()))] =
				static_cast<char>('0' + random.bounded(10));
		}
		qint64 end_ms = 0;
		for (const Cue &cue : phrases::phrasesOf(spokenWords(answer).value_or(QList<Word>()), 6000)) {
			QVERIFY(cue.start_ms >= end_ms && cue.start_ms < cue.end_ms && cue.end_ms <= 6000);
			end_ms = cue.end_ms;
		}
	}
}

KESTRUNE_TEST(SpokenWordsTest)
#include "spoken_words.moc"
