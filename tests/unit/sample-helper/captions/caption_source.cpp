#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include "captions/made_model.hpp"
#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

/// Captions from subtitle files and from speech. The replay's last two seconds are plain white, so frames that are not
/// white show a caption.
class CaptionSourceTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void showsSidecarsAtTheirTime_data();
	void showsSidecarsAtTheirTime();
	void showsHostileTextsAsTexts();
	void makesShortsWithoutCaptionsAndSaysWhy_data();
	void makesShortsWithoutCaptionsAndSaysWhy();
	void transcribesTheLastSeconds();
	void keepsSpeechBetweenBrackets();
	void findsProgramAndModelByItself();
	void runsTheRealProgram();
	void saysThatTheSoundIsUnreadable();
	void prefersTheSidecar();
	void needsNoTranscriberForSilence();
	void makesShortsWithoutATranscription_data();
	void makesShortsWithoutATranscription();
	void leavesTheReplayAndItsFolderAlone();
};

namespace {
/// Has an account, and the replay in its own folder.
class Studio : public Sandbox {
public:
	Studio()
	{
		linkAccount(*this);
		QDir(path()).mkpath(u"replays"_s);
		QFile::copy(videos::blackThenWhite(), replay());
	}

	QString replay() const { return path(u"replays/Replay 1.5.mkv"_s); }

	void addSidecar(const QByteArray &content, const QString &suffix = u".srt"_s) const
	{
		writeFile(u"replays/Replay 1.5"_s + suffix, content);
	}

	/// A fake whisper.cpp: takes the same arguments, describes the sound in "heard.txt" and runs `answer`, which
	/// writes the transcript. It only takes files in its own folder, because on Windows the real one cannot open
	/// paths with foreign characters.
	void useTranscriber(const QByteArray &answer)
	{
		const QByteArray script =
			"while [ $# -gt 0 ]; do\n"
			"  case $1 in\n"
			"  -m) model=$2; shift;; -f) sound=$2; shift;; -of) target=$2; shift;;\n"
			"  -l) shift;; -ojf) json=yes;; -np) ;; *) exit 2;;\n"
			"  esac\n"
			"  shift\n"
			"done\n"
			"[ \"$(cat \"$model\")\" = 'lmgg' ] && [ $json = yes ] || exit 3\n"
			"case $sound$target in */*) exit 4;; esac\n"
			"ffprobe -v error -of csv=p=0 -show_entries stream=codec_name,sample_rate,channels:format=duration"
			" \"$sound\" > \"$KESTRUNE_SAMPLE_HELPER_HOME/heard.txt\"\n" +
			answer;
		setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER"_s, writeScript(u"tools/whisper-cli"_s, script));
		setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL"_s, writeFile(u"ggml-tiny.bin"_s, "lmgg"));
	}

	Run clip() const
	{
		return run(processArguments(replay(), 2,
					    lookArguments("gameplay", "clean") +
						    QStringList{u"--caption-position"_s, u"middle"_s}));
	}
};

/// A shell command that writes segments of speech as whisper.cpp does.
QByteArray segments(const QByteArray &list)
{
	return "printf '%s' '{\"transcription\":[" + list + "]}' > \"$target.json\"\n";
}

QByteArray segment(int from_ms, int to_ms, const QByteArray &text)
{
	return "{\"offsets\":{\"from\":" + QByteArray::number(from_ms) + ",\"to\":" + QByteArray::number(to_ms) +
	       "},\"text\":\" " + text + "\"}";
}

const QByteArray aWord = segments(segment(400, 1400, "Hello you there") + ',' + segment(1500, 2000, "[BLANK_AUDIO]"));

/// The captioned frames, such as "4-12"; 12 is the first without a caption.
QString captionedFrames(const QString &path)
{
	const QList<int> frames = videos::brightness(path);
	QStringList spans{};
	for (qsizetype i = 0; i < frames.size(); ++i) {
		const bool isShown = frames[i] < 254;
		const bool wasShown = i > 0 && frames[i - 1] < 254;
		if (isShown && !wasShown) {
			spans += QString::number(i);
		}
		if (wasShown && (!isShown || i + 1 == frames.size())) {
			spans.last() += u"-%1"_s.arg(isShown ? i + 1 : i);
		}
	}
	return spans.join(u' ');
}
} // namespace

void CaptionSourceTest::showsSidecarsAtTheirTime_data()
{
	QTest::addColumn<QString>("suffix");
	QTest::addColumn<QByteArray>("content");
	QTest::addColumn<QString>("frames");
	QTest::newRow("SubRip") << u".srt"_s
				<< QByteArray("\xef\xbb\xbf"
					      "1\r\n00:00:01,000 --> 00:00:03,000\r\nBefore\r\n\r\n"
					      "2\r\n00:00:04,400 --> 00:00:05,200\r\nHello there everybody\r\n")
				<< u"4-12"_s;
	QTest::newRow("WebVTT") << u".vtt"_s
				<< QByteArray("WEBVTT\n\n00:03.000 --> 00:04.400\nHello there everybody\n\n"
					      "00:05.600 --> 01:00.000\n<v Ana>How are you doing?</v>\n")
				<< u"0-4 16-20"_s;
	QTest::newRow("SubRip in capitals")
		<< u".SRT"_s << QByteArray("00:00:04,400 --> 00:00:05,200\nHello there everybody\n") << u"4-12"_s;
	QTest::newRow("WebVTT in capitals")
		<< u".VTT"_s << QByteArray("WEBVTT\n\n00:04.400 --> 00:05.200\nHello there everybody\n") << u"4-12"_s;
	QTest::newRow("nobody speaks") << u".srt"_s << QByteArray("00:00:01,000 --> 00:00:03,000\nBefore\n")
				       << QString();
}

void CaptionSourceTest::showsSidecarsAtTheirTime()
{
	QFETCH(const QString, suffix);
	QFETCH(const QByteArray, content);
	QFETCH(const QString, frames);
	const Studio studio;
	studio.addSidecar(content, suffix);
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	QCOMPARE(captionedFrames(shortPath(run)), frames);
}

void CaptionSourceTest::showsHostileTextsAsTexts()
{
	const Studio studio;
	// If obeyed, each of these would cover the whole picture.
	studio.addSidecar("00:00:04,000 --> 00:00:04,800\n"
			  "{\\pos(0,0)\\an7\\p1{}m 0 0 l 1080 0 1080 1920 0 1920\n\n"
			  "00:00:05,000 --> 00:00:05,800\n"
			  "{\\fs9000{}W',drawbox=t=fill;[in]null\\N%1\n\n"
			  "Dialogue: 0,0:00:00.00,0:01:00.00,Layer0,,0,0,0,,{\\fs9000}W\n");
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(captionedFrames(shortPath(run)), u"0-8 10-18"_s);
	const QList<int> frames = videos::brightness(shortPath(run));
	QVERIFY(*std::min_element(frames.begin(), frames.end()) > 150);
}

void CaptionSourceTest::makesShortsWithoutCaptionsAndSaysWhy_data()
{
	QTest::addColumn<QByteArray>("content");
	QTest::addColumn<QString>("text");
	QTest::newRow("empty") << QByteArray("") << u"without captions, Replay 1.5.srt holds no subtitles"_s;
	QTest::newRow("prose") << QByteArray("dear diary\n")
			       << u"without captions, Replay 1.5.srt holds no subtitles"_s;
	QTest::newRow("binary") << QByteArray("00:00:04,400 --> 00:00:05,200\nHello\n") + QByteArray(10, '\0')
				<< u"without captions, Replay 1.5.srt holds no subtitles"_s;
	QTest::newRow("huge") << QByteArray("00:00:04,400 --> 00:00:05,200\nHello\n\n").repeated(30000)
			      << u"without captions, Replay 1.5.srt is too large"_s;
}

void CaptionSourceTest::makesShortsWithoutCaptionsAndSaysWhy()
{
	QFETCH(const QByteArray, content);
	QFETCH(const QString, text);
	const Studio studio;
	studio.addSidecar(content);
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), text);
	QCOMPARE(captionedFrames(shortPath(run)), QString());
}

void CaptionSourceTest::transcribesTheLastSeconds()
{
	Studio studio;
	studio.useTranscriber(aWord);
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	QCOMPARE(captionedFrames(shortPath(run)), u"4-14"_s);
	const QList<QByteArray> heard = studio.readFile(u"heard.txt"_s).split('\n');
	QCOMPARE(heard.value(0), QByteArray("pcm_s16le,16000,1"));
	QVERIFY2(std::abs(heard.value(1).toDouble() - 2) < 0.05, heard.value(1).constData());
	// Nothing else tells how far a clip is meanwhile.
	for (const char *text : {"whisper-cli is listening to 2 s of sound", "whisper-cli ended after "}) {
		QVERIFY2(run.errorOutput.contains(text), run.errorOutput.constData());
	}
}

void CaptionSourceTest::keepsSpeechBetweenBrackets()
{
	Studio studio;
	studio.useTranscriber(segments(segment(0, 300, "(soft music)") + ',' + segment(400, 1400, "(yes) I do (so)") +
				       ',' + segment(1500, 2000, "[MUSIC]")));
	QCOMPARE(captionedFrames(shortPath(studio.clip())), u"4-14"_s);
}

void CaptionSourceTest::findsProgramAndModelByItself()
{
	Studio studio;
	studio.useTranscriber(aWord);
	studio.setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER"_s, {});
	studio.setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL"_s, {});
	QVERIFY(QDir(studio.path()).rename(u"tools"_s, u"whisper"_s));
	studio.writeFile(u"models/ggml-base.bin"_s, "lmgg");
	// One that is installed would come first.
	const bool isInstalled = !QStandardPaths::findExecutable(u"whisper-cli"_s).isEmpty();
	if (isInstalled) {
		studio.setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER"_s, studio.path(u"whisper/whisper-cli"_s));
	}
	const Run run = studio.clip();
	QCOMPARE(note(run), QString());
	QCOMPARE(captionedFrames(shortPath(run)), u"4-14"_s);
}

void CaptionSourceTest::runsTheRealProgram()
{
	if (QStandardPaths::findExecutable(u"whisper-cli"_s).isEmpty()) {
		QSKIP("whisper.cpp isn't installed");
	}
	Studio studio;
	studio.writeFile(u"models/ggml-made.bin"_s, madeModel({u" Hi"_s, u" every"_s, u"body"_s, u"."_s}, 2));
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	// When words end is guessed by how loud it is.
	const QString frames = captionedFrames(shortPath(run));
	QVERIFY2(frames.startsWith(u"0-"_s) && !frames.contains(u' '), qPrintable(frames));
	const int end = frames.section(u'-', 1).toInt();
	QVERIFY2(end >= 8, qPrintable(frames));
}

void CaptionSourceTest::saysThatTheSoundIsUnreadable()
{
	Studio studio;
	studio.useTranscriber(aWord);
	studio.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	studio.useTool(u"ffmpeg"_s, "case \"$*\" in *pcm_s16le*) echo 'No space left on device' >&2;"
				    " exit 1;; esac\nexec ffmpeg \"$@\"");
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"without captions, its sound couldn't be read"_s);
	QVERIFY(run.errorOutput.contains("the disk is full."));
}

void CaptionSourceTest::prefersTheSidecar()
{
	Studio studio;
	studio.useTranscriber(aWord);
	studio.addSidecar("00:00:05,000 --> 00:00:05,400\nWritten by hand, not heard\n");
	const Run run = studio.clip();
	QCOMPARE(captionedFrames(shortPath(run)), u"10-14"_s);
	QVERIFY(studio.readFile(u"heard.txt"_s).isEmpty());
}

void CaptionSourceTest::needsNoTranscriberForSilence()
{
	Studio studio;
	studio.useTranscriber(aWord);
	const Run run = studio.run(processArguments(videos::silent(), 1, lookArguments("gameplay", "clean")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	QVERIFY(studio.readFile(u"heard.txt"_s).isEmpty());
}

void CaptionSourceTest::makesShortsWithoutATranscription_data()
{
	QTest::addColumn<QByteArray>("answer");
	QTest::addColumn<QString>("variable");
	QTest::addColumn<QString>("value");
	QTest::addColumn<QString>("text");
	const QString program = u"KESTRUNE_SAMPLE_HELPER_WHISPER"_s;
	const QString model = u"KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL"_s;
	QTest::newRow("program missing") << aWord << program << u"/nonexistent/whisper-cli"_s
					 << u"without captions, whisper-cli isn't installed"_s;
	QTest::newRow("no model") << aWord << model << QString()
				  << u"without captions, there is no speech model in FOLDER/models"_s;
	QTest::newRow("something else as the model")
		<< aWord << model << u"/bin/sh"_s << u"without captions, sh is no speech model"_s;
	QTest::newRow("model missing") << aWord << model << u"/nonexistent/ggml.bin"_s
				       << u"without captions, the model ggml.bin doesn't exist"_s;
	QTest::newRow("fails") << QByteArray("exit 1") << QString() << QString()
			       << u"without captions, whisper-cli failed"_s;
	QTest::newRow("fails, but answers 0")
		<< QByteArray("exit 0") << QString() << QString() << u"without captions, whisper-cli failed"_s;
	QTest::newRow("crashes") << QByteArray("kill -9 $$") << QString() << QString()
				 << u"without captions, whisper-cli crashed"_s;
	QTest::newRow("hangs") << QByteArray("exec sleep 1000") << u"KESTRUNE_SAMPLE_HELPER_WHISPER_LIMIT_MS"_s
			       << u"1500"_s << u"without captions, whisper-cli took too long"_s;
	QTest::newRow("writes half an answer") << QByteArray("printf '{' > \"$target.json\"") << QString() << QString()
					       << u"without captions, whisper-cli failed"_s;
	QTest::newRow("says nothing") << segments("") << QString() << QString() << QString();
}

void CaptionSourceTest::makesShortsWithoutATranscription()
{
	QFETCH(const QByteArray, answer);
	QFETCH(const QString, variable);
	QFETCH(const QString, value);
	QFETCH(const QString, text);
	Studio studio;
	studio.useTranscriber(answer);
	if (!variable.isEmpty()) {
		studio.setVariable(variable, value);
	}
	const Run run = studio.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run).replace(studio.path(), u"FOLDER"_s), text);
	QCOMPARE(captionedFrames(shortPath(run)), QString());
	QCOMPARE(videos::brightness(shortPath(run)).size(), 2 * videos::framesPerSecond);
}

void CaptionSourceTest::leavesTheReplayAndItsFolderAlone()
{
	Studio studio;
	studio.useTranscriber(aWord);
	const auto snapshot = [&studio] {
		QStringList lines{};
		const QDir folder(QFileInfo(studio.replay()).path());
		for (const QFileInfo &file :
		     folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
			lines += file.fileName() + u' ' + file.lastModified().toString(Qt::ISODateWithMs) + u' ' +
				 QString::fromLatin1(videos::checksum(file.filePath()));
		}
		return lines;
	};
	const QStringList before = snapshot();
	QCOMPARE(before.size(), 1);
	QCOMPARE(eventName(studio.clip()), u"done"_s);
	QCOMPARE(snapshot(), before);

	studio.addSidecar("00:00:05,000 --> 00:00:05,400\nWritten by hand, not heard\n");
	const QStringList withSidecar = snapshot();
	QCOMPARE(eventName(studio.clip()), u"done"_s);
	QCOMPARE(snapshot(), withSidecar);
	QCOMPARE(QDir(studio.path()).entryList({u"run-*"_s}, QDir::Dirs), QStringList());
}

KESTRUNE_TEST(CaptionSourceTest)
#include "caption_source.moc"
