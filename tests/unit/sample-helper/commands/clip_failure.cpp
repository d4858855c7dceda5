#include <QDir>
#include <QFile>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"
#include "videos.hpp"

using namespace Qt::StringLiterals;

/// Failures of --process: a helpful "error" event, the replay untouched, nothing half-made.
class ClipFailureTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void refusesBadReplays_data();
	void refusesBadReplays();
	void refusesBadLengths_data();
	void refusesBadLengths();
	void reportsMissingFfmpeg();
	void reportsMissingFfprobe();
	void reportsFfmpegThatCannotStart();
	void reportsFfmpegThatCrashes();
	void reportsFfmpegThatHangs();
	void reportsFfprobeThatHangs();
	void reportsWhatFfmpegSays_data();
	void reportsWhatFfmpegSays();
	void reportsFfmpegWithoutH264();
	void reportsADiskThatFillsUp();
	void reportsAWriteBeyondTheAllowedSize();
	void reportsAnOutputFolderThatCannotBeMade();
};

namespace {
QStringList processArguments(const QString &replay, const QString &seconds = u"2"_s)
{
	return {u"--process"_s, replay, u"--seconds"_s, seconds, u"--scene"_s, u"obs"_s};
}

QString errorOf(const Run &run)
{
	const QJsonObject event = run.onlyEvent();
	return event[u"event"].toString() == u"error" && run.exitCode == 1
		       ? event[u"error"].toString()
		       : u"(no error event) "_s + QString::fromUtf8(run.output);
}

/// Runs the helper on a good replay after the shell command `prelude` and returns its error. The replay must stay
/// unchanged, and no file may stay in the Shorts folder.
QString errorAfter(const Sandbox &sandbox, const QString &prelude)
{
	const QByteArray before = videos::checksum(videos::regions());
	const Run run = sandbox.runProgram(u"sh"_s,
					   QStringList{u"-c"_s, prelude + u"\nexec \"$@\""_s, u"sh"_s, sampleHelper()} +
						   processArguments(videos::regions()));
	if (videos::checksum(videos::regions()) != before) {
		return u"the replay was changed"_s;
	}
	if (!sandbox.shortsFolderContent().isEmpty()) {
		return u"left behind: "_s + sandbox.shortsFolderContent().join(u' ');
	}
	return errorOf(run);
}
} // namespace

void ClipFailureTest::refusesBadReplays_data()
{
	QTest::addColumn<QString>("name");
	QTest::addColumn<QByteArray>("content");
	QTest::addColumn<QString>("text");
	QTest::newRow("missing") << u"gone.mkv"_s << QByteArray() << u"the replay %1 doesn't exist."_s;
	QTest::newRow("empty path") << QString() << QByteArray() << u"the replay  doesn't exist."_s;
	QTest::newRow("folder") << u"tools"_s << QByteArray() << u"the replay %1 can't be read: it is no file."_s;
	QTest::newRow("empty") << u"empty.mkv"_s << QByteArray("") << u"the replay empty.mkv is empty."_s;
	QTest::newRow("text") << u"notes.txt"_s << QByteArray("dear diary\n").repeated(100)
			      << u"notes.txt isn't a video that ffmpeg can read."_s;
	QTest::newRow("text with a video's name") << u"notes.mkv"_s << QByteArray("dear diary\n").repeated(100)
						  << u"notes.mkv isn't a video that ffmpeg can read."_s;
	QFile video(videos::regions());
	QTest::newRow("a video's beginning only")
		<< u"torn.mkv"_s << (video.open(QIODevice::ReadOnly) ? video.read(300) : QByteArray())
		<< u"torn.mkv isn't a video that ffmpeg can read."_s;
	QTest::newRow("picture") << u"picture.png"_s
				 << videos::ffmpeg({u"-i"_s, videos::silent(), u"-frames:v"_s, u"1"_s, u"-c:v"_s,
						    u"png"_s, u"-f"_s, u"image2pipe"_s, u"-"_s})
				 << u"picture.png isn't a video that ffmpeg can read."_s;
	QTest::newRow("sound only") << u"sound.mkv"_s
				    << videos::ffmpeg({u"-i"_s, videos::regions(), u"-vn"_s, u"-c"_s, u"copy"_s,
						       u"-f"_s, u"matroska"_s, u"-"_s})
				    << u"sound.mkv isn't a video that ffmpeg can read."_s;
}

void ClipFailureTest::refusesBadReplays()
{
	QFETCH(const QString, name);
	QFETCH(const QByteArray, content);
	QFETCH(const QString, text);
	const Sandbox sandbox;
	QVERIFY(QDir(sandbox.path()).mkpath(u"tools"_s));
	const QString replay = name.isEmpty() ? QString() : sandbox.path(name);
	if (!content.isNull()) {
		sandbox.writeFile(name, content);
	}
	const Run run = sandbox.run(processArguments(replay));
	QCOMPARE(errorOf(run), text.contains(u"%1"_s) ? text.arg(replay) : text);
	QVERIFY(sandbox.shortsFolderContent().isEmpty());
	if (!content.isNull()) {
		QFile file(replay);
		QVERIFY(file.open(QIODevice::ReadOnly));
		QCOMPARE(file.readAll(), content);
	}
}

void ClipFailureTest::refusesBadLengths_data()
{
	QTest::addColumn<QString>("seconds");
	for (const char *seconds : {"0", "-5", "3601", "1.5", "soon", ""}) {
		QTest::newRow(seconds) << QString::fromLatin1(seconds);
	}
}

void ClipFailureTest::refusesBadLengths()
{
	QFETCH(const QString, seconds);
	const Sandbox sandbox;
	QCOMPARE(errorOf(sandbox.run(processArguments(videos::regions(), seconds))),
		 u"--seconds needs a whole number from 1 to 3600."_s);
}

void ClipFailureTest::reportsMissingFfmpeg()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	QCOMPARE(errorAfter(sandbox, QString()), u"ffmpeg isn't installed. Install ffmpeg, then clip again."_s);
}

void ClipFailureTest::reportsMissingFfprobe()
{
	Sandbox sandbox;
	sandbox.setVariable(u"PATH"_s, sandbox.path());
	const Run run = sandbox.run(processArguments(videos::regions()));
	QCOMPARE(errorOf(run), u"ffprobe isn't installed. Install ffmpeg, then clip again."_s);
}

void ClipFailureTest::reportsFfmpegThatCannotStart()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffmpeg"_s, "");
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	QFile broken(sandbox.path(u"tools/ffmpeg"_s));
	QVERIFY(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
	QVERIFY(broken.write("#!/nonexistent/interpreter\n") > 0);
	broken.close();
	QCOMPARE(errorAfter(sandbox, QString()), u"ffmpeg couldn't be started. Install ffmpeg again."_s);
}

void ClipFailureTest::reportsFfmpegThatCrashes()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(
		u"ffmpeg"_s,
		"for last; do :; done\ncase \"$last\" in *.part) echo half > \"${last#file:}\"; kill -9 $$;; esac");
	QCOMPARE(errorAfter(sandbox, QString()), u"ffmpeg stopped unexpectedly."_s);
}

void ClipFailureTest::reportsFfmpegThatHangs()
{
	Sandbox sandbox;
	// Long enough for the real ffprobe on a busy machine.
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_STILL_LIMIT_MS"_s, u"15500"_s);
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s, "for last; do :; done\ncase \"$last\" in *.part) echo half > \"${last#file:}\";"
				     " exec sleep 1000;; esac");
	QCOMPARE(errorAfter(sandbox, QString()), u"ffmpeg hung, nothing came of it for 15.5 s. Clip again."_s);
}

void ClipFailureTest::reportsFfprobeThatHangs()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_STILL_LIMIT_MS"_s, u"1000"_s);
	sandbox.useTool(u"ffprobe"_s, "exec sleep 1000");
	QCOMPARE(errorAfter(sandbox, QString()), u"ffprobe hung, nothing came of it for 1 s. Clip again."_s);
}

void ClipFailureTest::reportsWhatFfmpegSays_data()
{
	QTest::addColumn<QByteArray>("said");
	QTest::addColumn<QString>("text");
	QTest::newRow("no frames") << QByteArray("[out#0/mp4 @ 0x55d0c0ffee00] Nothing was written into output file, "
						 "because at least one of its streams received no packets.")
				   << u"ffmpeg found no frames in the replay."_s;
	QTest::newRow("origins") << QByteArray("[vost#0:0/libx264 @ 0x55d0c0ffee00] [enc:libx264 @ 0x55d0c0ffee01] "
					       "Could not open encoder before EOF.")
				 << u"ffmpeg failed: Could not open encoder before EOF."_s;
	QTest::newRow("the temporary name") << QByteArray("Error opening output file $last.")
					    << u"ffmpeg failed: Error opening output file its output."_s;
	QTest::newRow("nothing but marks")
		<< QByteArray("[out#0/mp4 @ 0x55d0c0ffee00] ..") << u"ffmpeg stopped unexpectedly."_s;
}

void ClipFailureTest::reportsWhatFfmpegSays()
{
	QFETCH(const QByteArray, said);
	QFETCH(const QString, text);
	Sandbox sandbox;
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s,
			"for last; do :; done\ncase \"$last\" in *.part) echo \"" + said + "\" >&2; exit 1;; esac");
	QCOMPARE(errorAfter(sandbox, QString()), text);
}

void ClipFailureTest::reportsFfmpegWithoutH264()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *libx264*) echo \"Unknown encoder 'libx264'\" >&2; exit 1;; esac");
	QCOMPARE(errorAfter(sandbox, QString()),
		 u"this ffmpeg can't make H.264 video. Install a full build of ffmpeg."_s);
}

void ClipFailureTest::reportsADiskThatFillsUp()
{
	const Sandbox sandbox;
	QVERIFY(QDir().mkpath(sandbox.shortsFolder()));
	const QString mount = u"mount -t tmpfs -o size=8k none '%1'"_s.arg(sandbox.shortsFolder());
	const QStringList unshare{u"--user"_s, u"--map-root-user"_s, u"--mount"_s, u"sh"_s, u"-c"_s};
	if (sandbox.runProgram(u"unshare"_s, unshare + QStringList{mount}).exitCode != 0) {
		QSKIP("mounting a small disk is not allowed here");
	}
	const QByteArray before = videos::checksum(videos::regions());
	// The small disk disappears with the run, so the run lists what is left on it.
	const QString script = mount + u"\n\"$@\"\ncode=$?\nls -A '%1' >&2\nexit $code"_s.arg(sandbox.shortsFolder());
	const Run run = sandbox.runProgram(u"unshare"_s, unshare + QStringList{script, u"sh"_s, sampleHelper()} +
								 processArguments(videos::regions()));
	QCOMPARE(errorOf(run), u"the disk is full. Free some space, then clip again."_s);
	QVERIFY2(!run.errorOutput.endsWith(".part\n") && !run.errorOutput.endsWith(".mp4\n"),
		 run.errorOutput.constData());
	QCOMPARE(videos::checksum(videos::regions()), before);
}

void ClipFailureTest::reportsAWriteBeyondTheAllowedSize()
{
	const Sandbox sandbox;
	// With the signal ignored, writes beyond the limit fail halfway, as on a full disk.
	QCOMPARE(errorAfter(sandbox, u"trap '' XFSZ\nulimit -f 16"_s),
		 u"the disk is full. Free some space, then clip again."_s);
}

void ClipFailureTest::reportsAnOutputFolderThatCannotBeMade()
{
	Sandbox sandbox;
	const QString folder = sandbox.writeFile(u"file"_s, "x") + u"/Shorts"_s;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OUTPUT"_s, folder);
	QCOMPARE(errorAfter(sandbox, QString()), u"couldn't make the folder %1: Not a directory."_s.arg(folder));
}

KESTRUNE_TEST(ClipFailureTest)
#include "clip_failure.moc"
