#include "sandbox.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

#include <QDir>
#include <QFile>
#include <QTest>

/// Every failure of --process: an "error" event that a streamer understands, the replay untouched, nothing half-made.
class ClipFailureTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void refuses_bad_replays_data();
	void refuses_bad_replays();
	void refuses_bad_lengths_data();
	void refuses_bad_lengths();
	void reports_missing_ffmpeg();
	void reports_missing_ffprobe();
	void reports_ffmpeg_that_cannot_start();
	void reports_ffmpeg_that_crashes();
	void reports_ffmpeg_without_h264();
	void reports_a_disk_that_fills_up();
	void reports_a_write_beyond_the_allowed_size();
	void reports_an_output_folder_that_cannot_be_made();
};

namespace {

QStringList processArguments(const QString &replay, const QString &seconds = QStringLiteral("2"))
{
	return {QStringLiteral("--process"), replay, QStringLiteral("--seconds"), seconds, QStringLiteral("--scene"),
		QStringLiteral("obs")};
}

QString errorOf(const Run &run)
{
	const QJsonObject event = run.onlyEvent();
	return event[QLatin1String("event")].toString() == QLatin1String("error") && run.exitCode == 1
		       ? event[QLatin1String("error")].toString()
		       : QStringLiteral("(no error event) ") + QString::fromUtf8(run.output);
}

/// Runs the helper on the good replay with the shell command `prelude` in front; the replay must stay as it is and no
/// file may stay behind in the folder of Shorts.
QString errorAfter(const Sandbox &sandbox, const QString &prelude)
{
	const QByteArray before = videos::checksum(videos::regions());
	const Run run = sandbox.runProgram(QStringLiteral("sh"),
					   QStringList{QStringLiteral("-c"), prelude + QStringLiteral("\nexec \"$@\""),
						       QStringLiteral("sh"), sampleHelper()} +
						   processArguments(videos::regions()));
	if (videos::checksum(videos::regions()) != before) {
		return QStringLiteral("the replay was changed");
	}
	if (!sandbox.shortsFolderContent().isEmpty()) {
		return QStringLiteral("left behind: ") + sandbox.shortsFolderContent().join(QLatin1Char(' '));
	}
	return errorOf(run);
}

} // namespace

void ClipFailureTest::refuses_bad_replays_data()
{
	QTest::addColumn<QString>("name");
	QTest::addColumn<QByteArray>("content");
	QTest::addColumn<QString>("text");
	QTest::newRow("missing") << QStringLiteral("gone.mkv") << QByteArray()
				 << QStringLiteral("the replay %1 doesn't exist.");
	QTest::newRow("empty path") << QString() << QByteArray() << QStringLiteral("the replay  doesn't exist.");
	QTest::newRow("folder") << QStringLiteral("tools") << QByteArray()
				<< QStringLiteral("the replay %1 can't be read.");
	QTest::newRow("empty") << QStringLiteral("empty.mkv") << QByteArray("")
			       << QStringLiteral("the replay empty.mkv is empty.");
	QTest::newRow("text") << QStringLiteral("notes.txt") << QByteArray("dear diary\n").repeated(100)
			      << QStringLiteral("notes.txt isn't a video that ffmpeg can read.");
	QTest::newRow("text with a video's name")
		<< QStringLiteral("notes.mkv") << QByteArray("dear diary\n").repeated(100)
		<< QStringLiteral("notes.mkv isn't a video that ffmpeg can read.");
	QFile video(videos::regions());
	QTest::newRow("a video's beginning only")
		<< QStringLiteral("torn.mkv") << (video.open(QIODevice::ReadOnly) ? video.read(300) : QByteArray())
		<< QStringLiteral("torn.mkv isn't a video that ffmpeg can read.");
	QTest::newRow("picture") << QStringLiteral("picture.png")
				 << videos::ffmpeg({QStringLiteral("-i"), videos::silent(), QStringLiteral("-frames:v"),
						    QStringLiteral("1"), QStringLiteral("-c:v"), QStringLiteral("png"),
						    QStringLiteral("-f"), QStringLiteral("image2pipe"),
						    QStringLiteral("-")})
				 << QStringLiteral("picture.png isn't a video that ffmpeg can read.");
	QTest::newRow("sound only") << QStringLiteral("sound.mkv")
				    << videos::ffmpeg({QStringLiteral("-i"), videos::regions(), QStringLiteral("-vn"),
						       QStringLiteral("-c"), QStringLiteral("copy"),
						       QStringLiteral("-f"), QStringLiteral("matroska"),
						       QStringLiteral("-")})
				    << QStringLiteral("sound.mkv isn't a video that ffmpeg can read.");
}

void ClipFailureTest::refuses_bad_replays()
{
	QFETCH(const QString, name);
	QFETCH(const QByteArray, content);
	QFETCH(const QString, text);
	const Sandbox sandbox;
	QVERIFY(QDir(sandbox.path()).mkpath(QStringLiteral("tools")));
	const QString replay = name.isEmpty() ? QString() : sandbox.path(name);
	if (!content.isNull()) {
		sandbox.writeFile(name, content);
	}
	const Run run = sandbox.run(processArguments(replay));
	QCOMPARE(errorOf(run), text.contains(QStringLiteral("%1")) ? text.arg(replay) : text);
	QVERIFY(sandbox.shortsFolderContent().isEmpty());
	if (!content.isNull()) {
		QFile file(replay);
		QVERIFY(file.open(QIODevice::ReadOnly));
		QCOMPARE(file.readAll(), content);
	}
}

void ClipFailureTest::refuses_bad_lengths_data()
{
	QTest::addColumn<QString>("seconds");
	for (const char *seconds : {"0", "-5", "3601", "1.5", "soon", ""}) {
		QTest::newRow(seconds) << QString::fromLatin1(seconds);
	}
}

void ClipFailureTest::refuses_bad_lengths()
{
	QFETCH(const QString, seconds);
	const Sandbox sandbox;
	QCOMPARE(errorOf(sandbox.run(processArguments(videos::regions(), seconds))),
		 QStringLiteral("--seconds needs a whole number from 1 to 3600."));
}

void ClipFailureTest::reports_missing_ffmpeg()
{
	Sandbox sandbox;
	sandbox.useTool(QStringLiteral("ffprobe"), "exec ffprobe \"$@\"");
	QCOMPARE(errorAfter(sandbox, QString()),
		 QStringLiteral("ffmpeg isn't installed. Install ffmpeg, then clip again."));
}

void ClipFailureTest::reports_missing_ffprobe()
{
	Sandbox sandbox;
	sandbox.setVariable(QStringLiteral("PATH"), sandbox.path());
	const Run run = sandbox.run(processArguments(videos::regions()));
	QCOMPARE(errorOf(run), QStringLiteral("ffprobe isn't installed. Install ffmpeg, then clip again."));
}

void ClipFailureTest::reports_ffmpeg_that_cannot_start()
{
	Sandbox sandbox;
	sandbox.useTool(QStringLiteral("ffmpeg"), "");
	sandbox.useTool(QStringLiteral("ffprobe"), "exec ffprobe \"$@\"");
	QFile broken(sandbox.path(QStringLiteral("tools/ffmpeg")));
	QVERIFY(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
	QVERIFY(broken.write("#!/nonexistent/interpreter\n") > 0);
	broken.close();
	QCOMPARE(errorAfter(sandbox, QString()), QStringLiteral("ffmpeg couldn't be started. Install ffmpeg again."));
}

void ClipFailureTest::reports_ffmpeg_that_crashes()
{
	Sandbox sandbox;
	sandbox.useTool(QStringLiteral("ffprobe"), "exec ffprobe \"$@\"");
	sandbox.useTool(
		QStringLiteral("ffmpeg"),
		"for last; do :; done\ncase \"$last\" in *.part) echo half > \"${last#file:}\"; kill -9 $$;; esac");
	QCOMPARE(errorAfter(sandbox, QString()), QStringLiteral("ffmpeg stopped unexpectedly."));
}

void ClipFailureTest::reports_ffmpeg_without_h264()
{
	Sandbox sandbox;
	sandbox.useTool(QStringLiteral("ffprobe"), "exec ffprobe \"$@\"");
	sandbox.useTool(QStringLiteral("ffmpeg"),
			"case \"$*\" in *libx264*) echo \"Unknown encoder 'libx264'\" >&2; exit 1;; esac");
	QCOMPARE(errorAfter(sandbox, QString()),
		 QStringLiteral("this ffmpeg can't make H.264 video. Install a full build of ffmpeg."));
}

void ClipFailureTest::reports_a_disk_that_fills_up()
{
	const Sandbox sandbox;
	QVERIFY(QDir().mkpath(sandbox.shortsFolder()));
	const QString mount = QStringLiteral("mount -t tmpfs -o size=8k none '%1'").arg(sandbox.shortsFolder());
	const QStringList unshare{QStringLiteral("--user"), QStringLiteral("--map-root-user"),
				  QStringLiteral("--mount"), QStringLiteral("sh"), QStringLiteral("-c")};
	if (sandbox.runProgram(QStringLiteral("unshare"), unshare + QStringList{mount}).exitCode != 0) {
		QSKIP("a small disk of its own needs a mount, which is not allowed here");
	}
	const QByteArray before = videos::checksum(videos::regions());
	// The little disk is gone with the run, so the run itself has to tell what was left on it.
	const QString script =
		mount + QStringLiteral("\n\"$@\"\ncode=$?\nls -A '%1' >&2\nexit $code").arg(sandbox.shortsFolder());
	const Run run = sandbox.runProgram(QStringLiteral("unshare"),
					   unshare + QStringList{script, QStringLiteral("sh"), sampleHelper()} +
						   processArguments(videos::regions()));
	QCOMPARE(errorOf(run), QStringLiteral("the disk is full. Free some space, then clip again."));
	QVERIFY2(!run.errorOutput.endsWith(".part\n") && !run.errorOutput.endsWith(".mp4\n"),
		 run.errorOutput.constData());
	QCOMPARE(videos::checksum(videos::regions()), before);
}

void ClipFailureTest::reports_a_write_beyond_the_allowed_size()
{
	const Sandbox sandbox;
	// With the signal ignored, a write beyond the limit fails as on a full disk: part of it is stored, then no
	// more.
	QCOMPARE(errorAfter(sandbox, QStringLiteral("trap '' XFSZ\nulimit -f 16")),
		 QStringLiteral("the disk is full. Free some space, then clip again."));
}

void ClipFailureTest::reports_an_output_folder_that_cannot_be_made()
{
	Sandbox sandbox;
	const QString folder = sandbox.writeFile(QStringLiteral("file"), "x") + QStringLiteral("/Shorts");
	sandbox.setVariable(QStringLiteral("KESTRUNE_SAMPLE_HELPER_OUTPUT"), folder);
	QCOMPARE(errorAfter(sandbox, QString()), QStringLiteral("couldn't make the folder %1.").arg(folder));
}

KESTRUNE_TEST(ClipFailureTest)
#include "clip_failure.moc"
