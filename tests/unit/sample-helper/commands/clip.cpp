#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

class ClipTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void composesEveryLayout_data();
	void composesEveryLayout();
	void burnsACaptionInEveryStyle_data();
	void burnsACaptionInEveryStyle();
	void cutsTheLastSeconds();
	void takesTheWholeOfAShortReplay();
	void makesASilentShortOfASilentReplay();
	void readsOddPaths_data();
	void readsOddPaths();
	void readsAReplayWithoutADuration();
	void readsAReplayWithoutAnyTimes();
	void findsTheCameraWhereItIsTold();
	void remembersTheLook();
	void makesTheShortWhenItCannotRememberTheLook();
	void replacesUnknownChoicesAndSaysSo();
	void leavesTheCaptionOutWhenFfmpegCannotDraw();
	void leavesTheCaptionOutWhenItCannotBeStored();
	void storesShortsWhereItIsTold();
	void answersByTheStateOfTheAccount();
	void runsSideBySideAndListsOnlyWholeShorts();
};

namespace {
/// The closest of red, green and blue at a point of the frame.
char colourAt(const QByteArray &frame, int x, int y)
{
	const qsizetype at = (static_cast<qsizetype>(y) * 1080 + x) * 3;
	if (frame.size() < at + 3) {
		return '?';
	}
	std::array<int, 3> parts{};
	for (std::size_t i = 0; i < parts.size(); ++i) {
		parts[i] = static_cast<unsigned char>(frame[at + static_cast<qsizetype>(i)]);
	}
	return "rgb"[std::max_element(parts.begin(), parts.end()) - parts.begin()];
}
} // namespace

void ClipTest::composesEveryLayout_data()
{
	QTest::addColumn<QByteArray>("layout");
	// Colours at (100, 100), (980, 100), (500, 1300) and (980, 1880). No layout shows the green corner as part of
	// the game.
	QTest::addColumn<QByteArray>("colours");
	QTest::newRow("Bubble: blurred behind, camera in a disc") << QByteArray("vtuber-bubble") << QByteArray("rbgb");
	QTest::newRow("Face panel: camera above") << QByteArray("vtuber") << QByteArray("ggrb");
	QTest::newRow("Facecam: webcam above") << QByteArray("facecam") << QByteArray("ggrb");
	QTest::newRow("Podcast: left half above right half") << QByteArray("podcast") << QByteArray("rrbg");
	QTest::newRow("Gameplay only: the middle") << QByteArray("gameplay") << QByteArray("rbrb");
}

void ClipTest::composesEveryLayout()
{
	QFETCH(const QByteArray, layout);
	QFETCH(const QByteArray, colours);
	const Sandbox sandbox;
	linkAccount(sandbox);
	const QByteArray before = videos::checksum(videos::regions());
	const Run run = sandbox.run(processArguments(videos::regions(), 2, lookArguments(layout.constData(), "none")));
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(eventName(run), u"done"_s);
	QVERIFY(!run.onlyEvent().contains(u"note"));
	QCOMPARE(videos::checksum(videos::regions()), before);

	const QString path = shortPath(run);
	QCOMPARE(sandbox.shortsFolderContent(), QStringList{QFileInfo(path).fileName()});
	QVERIFY(QRegularExpression(u"/Shorts/short-\\d{8}-\\d{6}-[0-9a-f]{8}\\.mp4$"_s).match(path).hasMatch());
	const videos::Details details = videos::details(path);
	QCOMPARE(details.width, 1080);
	QCOMPARE(details.height, 1920);
	QCOMPARE(details.videoCodec, u"h264"_s);
	QCOMPARE(details.pixelFormat, u"yuv420p"_s);
	QCOMPARE(details.audioCodec, u"aac"_s);
	QVERIFY2(std::abs(details.duration_s - 2) < 0.06, qPrintable(QString::number(details.duration_s)));
	QVERIFY(videos::isFastStart(path));

	const QByteArray frame = videos::firstFrame(path);
	QByteArray seen{};
	for (const auto &[x, y] :
	     {std::pair{100, 100}, std::pair{980, 100}, std::pair{500, 1300}, std::pair{980, 1880}}) {
		seen += colourAt(frame, x, y);
	}
	QCOMPARE(seen, colours);
}

void ClipTest::burnsACaptionInEveryStyle_data()
{
	QTest::addColumn<QByteArray>("style");
	QTest::addColumn<QByteArray>("position");
	QTest::addColumn<double>("height");
	QTest::newRow("rune") << QByteArray("rune") << QByteArray("auto") << 0.75;
	QTest::newRow("neon") << QByteArray("neon") << QByteArray("top") << 0.12;
	QTest::newRow("clean") << QByteArray("clean") << QByteArray("middle") << 0.5;
	QTest::newRow("meme") << QByteArray("meme") << QByteArray("bottom") << 0.86;
}

void ClipTest::burnsACaptionInEveryStyle()
{
	QFETCH(const QByteArray, style);
	QFETCH(const QByteArray, position);
	QFETCH(const double, height);
	const Sandbox sandbox;
	const QStringList look = lookArguments("gameplay", style.constData()) +
				 QStringList{u"--font"_s, u"inter"_s, u"--caption-position"_s, QLatin1String(position)};
	const Run run = sandbox.run(processArguments(videos::blackThenWhite(), 1, look));
	QCOMPARE(eventName(run), u"done"_s);
	const QByteArray frame = videos::firstFrame(shortPath(run));
	QCOMPARE(frame.size(), 1080 * 1920 * 3);

	// The replay is white here: what is not white is caption.
	double sum = 0;
	double count = 0;
	for (qsizetype i = 0; i < frame.size(); i += 3) {
		if (std::min({static_cast<unsigned char>(frame[i]), static_cast<unsigned char>(frame[i + 1]),
			      static_cast<unsigned char>(frame[i + 2])}) < 200) {
			const qsizetype row = i / (qsizetype{1080} * 3);
			sum += static_cast<double>(row);
			++count;
		}
	}
	QVERIFY2(count > 2000, qPrintable(QString::number(count)));
	QVERIFY2(std::abs(sum / count / 1920 - height) < 0.02, qPrintable(QString::number(sum / count / 1920)));
}

void ClipTest::cutsTheLastSeconds()
{
	const Sandbox sandbox;
	const Run run = sandbox.run(processArguments(videos::blackThenWhite(), 3, lookArguments("gameplay", "none")));
	const QList<int> frames = videos::brightness(shortPath(run));
	const auto dark = std::count_if(frames.begin(), frames.end(), [](int value) { return value < 128; });
	// One second of black, two of white.
	QCOMPARE(dark, videos::framesPerSecond);
	QCOMPARE(frames.size(), 3 * videos::framesPerSecond);
}

void ClipTest::takesTheWholeOfAShortReplay()
{
	const Sandbox sandbox;
	const Run run = sandbox.run(processArguments(videos::regions(), 120, lookArguments("gameplay", "none")));
	QCOMPARE(eventName(run), u"done"_s);
	QVERIFY(std::abs(videos::details(shortPath(run)).duration_s - 4) < 0.1);
}

void ClipTest::makesASilentShortOfASilentReplay()
{
	const Sandbox sandbox;
	const Run run = sandbox.run(processArguments(videos::silent(), 1, lookArguments("facecam", "clean")));
	QCOMPARE(eventName(run), u"done"_s);
	const videos::Details details = videos::details(shortPath(run));
	QCOMPARE(details.videoCodec, u"h264"_s);
	QCOMPARE(details.audioCodec, QString());
}

void ClipTest::readsOddPaths_data()
{
	QTest::addColumn<QString>("name");
	QTest::newRow("blanks, letters, emoji and quotes")
		<< QString::fromUtf8("Näher dran 🎮 \"it's\" 100%/été 1.mkv");
	QTest::newRow("like an address") << u"http://concat:1.mkv"_s;
	QTest::newRow("like a pattern") << u"clip %03d [1] {2} $HOME; *.mkv"_s;
	QTest::newRow("like a switch") << u"--status"_s;
}

void ClipTest::readsOddPaths()
{
	QFETCH(const QString, name);
	Sandbox sandbox;
	const QString home = sandbox.path(QString::fromUtf8("état 🎬 'a:b' \\x"));
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_HOME"_s, home);
	const QString replay = sandbox.path(u"replays/"_s + name);
	QVERIFY(QDir().mkpath(QFileInfo(replay).path()));
	QVERIFY(QFile::copy(videos::regions(), replay));
	const Run run = sandbox.run(processArguments(replay, 1, lookArguments("gameplay", "meme")));
	QCOMPARE(eventName(run), u"done"_s);
	QVERIFY(shortPath(run).startsWith(home));
	QCOMPARE(videos::details(shortPath(run)).width, 1080);
	QCOMPARE(videos::checksum(replay), videos::checksum(videos::regions()));
}

void ClipTest::readsAReplayWithoutADuration()
{
	const Sandbox sandbox;
	const QString replay = sandbox.path(u"live.mkv"_s);
	// Live files have no duration in the header, as after a crash of the writer.
	sandbox.writeFile(u"live.mkv"_s, videos::ffmpeg({u"-i"_s, videos::blackThenWhite(), u"-c"_s, u"copy"_s,
							 u"-live"_s, u"1"_s, u"-f"_s, u"matroska"_s, u"-"_s}));
	QCOMPARE(videos::details(replay).duration_s, 0.0);
	const Run run = sandbox.run(processArguments(replay, 1, lookArguments("gameplay", "none")));
	QCOMPARE(eventName(run), u"done"_s);
	const QList<int> frames = videos::brightness(shortPath(run));
	QCOMPARE(frames.size(), videos::framesPerSecond);
	QVERIFY(*std::min_element(frames.begin(), frames.end()) > 128);
}

void ClipTest::readsAReplayWithoutAnyTimes()
{
	const Sandbox sandbox;
	// Raw video: neither the header nor packets hold times.
	const QString replay = sandbox.writeFile(
		u"raw.h264"_s,
		videos::ffmpeg({u"-i"_s, videos::blackThenWhite(), u"-c:v"_s, u"copy"_s, u"-f"_s, u"h264"_s, u"-"_s}));
	QCOMPARE(videos::details(replay).duration_s, 0.0);
	const Run run = sandbox.run(processArguments(replay, 2, lookArguments("gameplay", "clean")));
	QCOMPARE(eventName(run), u"done"_s);
	const double length = videos::details(shortPath(run)).duration_s;
	QVERIFY2(std::abs(length - 2) < 0.1, qPrintable(QString::number(length)));
}

void ClipTest::findsTheCameraWhereItIsTold()
{
	Sandbox sandbox;
	linkAccount(sandbox);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CAMERA"_s, u"0, 0, 0.4, 0.4"_s);
	const Run run = sandbox.run(processArguments(videos::regions(), 1, lookArguments("vtuber", "none")));
	QCOMPARE(note(run), QString());
	QCOMPARE(colourAt(videos::firstFrame(shortPath(run)), 540, 300), 'r');
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CAMERA"_s, u"0.9,0,0.4,nonsense"_s);
	const Run fallback = sandbox.run(processArguments(videos::regions(), 1, lookArguments("vtuber", "none")));
	QCOMPARE(colourAt(videos::firstFrame(shortPath(fallback)), 540, 300), 'g');
	QCOMPARE(note(fallback),
		 u"KESTRUNE_SAMPLE_HELPER_CAMERA isn't left,top,width,height from 0 to 1, used the lower "
		 "right corner"_s);
	// A layout without a camera needs none.
	QCOMPARE(note(sandbox.run(processArguments(videos::regions(), 1, lookArguments("podcast", "none")))),
		 QString());
}

void ClipTest::remembersTheLook()
{
	const Sandbox sandbox;
	sandbox.run(processArguments(videos::silent(), 1,
				     lookArguments("podcast", "neon") + QStringList{u"--font"_s, u"inter"_s}));
	const QJsonObject status = sandbox.run({u"--status"_s}).onlyEvent();
	QCOMPARE(status[u"layout"].toString(), u"podcast"_s);
	QCOMPARE(status[u"style"].toString(), u"neon"_s);
	QCOMPARE(status[u"font"].toString(), u"inter"_s);
}

void ClipTest::makesTheShortWhenItCannotRememberTheLook()
{
	const Sandbox sandbox;
	linkAccount(sandbox);
	QVERIFY(QDir(sandbox.path()).mkpath(u"look.json"_s));
	const Run run = sandbox.run(processArguments(videos::silent(), 1, lookArguments("podcast", "none")));
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(eventName(run), u"done"_s);
	QVERIFY(QFile::exists(shortPath(run)));
	QCOMPARE(note(run),
		 u"its look isn't remembered, couldn't read look.json in %1: it is no file"_s.arg(sandbox.path()));
}

void ClipTest::replacesUnknownChoicesAndSaysSo()
{
	const Sandbox sandbox;
	linkAccount(sandbox);
	const Run run = sandbox.run(processArguments(videos::silent(), 1, lookArguments("sideways", "none")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"unknown layout \"sideways\", used \"vtuber-bubble\""_s);
}

void ClipTest::leavesTheCaptionOutWhenFfmpegCannotDraw()
{
	Sandbox sandbox;
	linkAccount(sandbox);
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *ass=*) echo 'No such filter' >&2; exit 8;; esac\n"
				     "exec ffmpeg \"$@\"");
	const Run run = sandbox.run(processArguments(videos::silent(), 1, lookArguments("gameplay", "meme")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"without captions, this ffmpeg can't draw text"_s);
	QCOMPARE(videos::details(shortPath(run)).width, 1080);
}

void ClipTest::leavesTheCaptionOutWhenItCannotBeStored()
{
	Sandbox sandbox;
	linkAccount(sandbox);
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	// A folder in the file's place prevents writing it.
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *ass=trial.ass*) mkdir captions.ass;; esac\nexec ffmpeg \"$@\"");
	const Run run = sandbox.run(processArguments(videos::silent(), 1, lookArguments("gameplay", "meme")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"without captions, they couldn't be stored"_s);
	QCOMPARE(videos::details(shortPath(run)).width, 1080);
}

void ClipTest::storesShortsWhereItIsTold()
{
	Sandbox sandbox;
	const QString folder = sandbox.path(u"my clips"_s);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OUTPUT"_s, folder);
	const Run run = sandbox.run(processArguments(videos::silent(), 1, lookArguments("gameplay", "none")));
	QCOMPARE(QFileInfo(shortPath(run)).path(), folder);
	const QJsonObject recent = sandbox.run({u"--recent"_s}).onlyEvent();
	QCOMPARE(recent[u"folder"].toString(), folder);
	QCOMPARE(recent[u"items"].toArray().at(0)[u"path"].toString(), shortPath(run));
}

void ClipTest::answersByTheStateOfTheAccount()
{
	Sandbox sandbox;
	const QStringList arguments = processArguments(videos::silent(), 1, lookArguments("gameplay", "none"));
	const Run unlinked = sandbox.run(arguments);
	QCOMPARE(eventName(unlinked), u"done"_s);
	QCOMPARE(note(unlinked), u"kept on this computer, no account is connected"_s);

	sandbox.run({u"--revoke"_s});
	const Run revoked = sandbox.run(arguments);
	QCOMPARE(revoked.exitCode, 1);
	QCOMPARE(eventName(revoked), u"error"_s);
	QCOMPARE(revoked.onlyEvent()[u"relink"].toBool(), true);
	QVERIFY(QFile::exists(shortPath(revoked)));

	linkAccount(sandbox);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OFFLINE"_s, u"1"_s);
	const Run offline = sandbox.run(arguments);
	QCOMPARE(offline.exitCode, 0);
	QCOMPARE(eventName(offline), u"pending"_s);
	QVERIFY(QFile::exists(shortPath(offline)));
	QCOMPARE(sandbox.shortsFolderContent().size(), 3);
}

void ClipTest::runsSideBySideAndListsOnlyWholeShorts()
{
	const Sandbox sandbox;
	const QStringList arguments = processArguments(videos::regions(), 4, lookArguments("vtuber-bubble", "neon"));
	const std::unique_ptr<QProcess> first = sandbox.start(arguments);
	const std::unique_ptr<QProcess> second = sandbox.start(arguments);
	while (!first->waitForFinished(50) && first->state() != QProcess::NotRunning) {
		const Run recent = sandbox.run({u"--recent"_s});
		const QJsonArray items = recent.onlyEvent()[u"items"].toArray();
		for (const auto &item : items) {
			QCOMPARE(videos::details(item[u"path"].toString()).width, 1080);
		}
	}
	const Run firstRun = finish(*first);
	const Run secondRun = finish(*second);
	QCOMPARE(eventName(firstRun), u"done"_s);
	QCOMPARE(eventName(secondRun), u"done"_s);
	QVERIFY(shortPath(firstRun) != shortPath(secondRun));
	QCOMPARE(sandbox.shortsFolderContent().size(), 2);
	QCOMPARE(videos::details(shortPath(firstRun)).height, 1920);
	QCOMPARE(videos::details(shortPath(secondRun)).height, 1920);
}

KESTRUNE_TEST(ClipTest)
#include "clip.moc"
