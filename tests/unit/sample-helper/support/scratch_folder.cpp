#include <QDir>
#include <QFile>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

/// The next clip removes what killed runs left behind. It leaves the files of living runs, however long they take, and
/// all files that aren't this program's.
class ScratchFolderTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void removesWhatAKilledRunLeftBehind();
	void leavesASuspendedRunItsFiles();
	void leavesWhatIsNotItsOwn_data();
	void leavesWhatIsNotItsOwn();
	void neverRemovesTheReplay_data();
	void neverRemovesTheReplay();
	void followsNoLinkToOtherFolders();
};

namespace {
const QString anyPart = u"short-*.part"_s;
const QString anyScratchFolder = u"run-*"_s;

QStringList clipOf(const QString &replay)
{
	return processArguments(replay, 1, lookArguments("gameplay", "none"));
}

QStringList found(const QString &folder, const QString &pattern)
{
	return QDir(folder).entryList({pattern}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

/// Starts a clip with an ffmpeg that waits for the file "go on" in the middle.
std::unique_ptr<QProcess> stoppedInTheMiddle(Sandbox &sandbox)
{
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s,
			"home=$KESTRUNE_SAMPLE_HELPER_HOME\nfor last; do :; done\ncase \"$last\" in *.part)\n"
			"echo half > \"${last#file:}\"\n"
			"while ! [ -e \"$home/go on\" ] && [ -d \"$home\" ]; do sleep 0.05; done;; esac\n"
			"exec ffmpeg \"$@\"");
	std::unique_ptr<QProcess> process = sandbox.start(clipOf(videos::silent()));
	const bool stopped =
		QTest::qWaitFor([&] { return !found(sandbox.shortsFolder(), anyPart).isEmpty(); }, patience_ms);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_FFMPEG"_s, {});
	return stopped ? std::move(process) : nullptr;
}

/// Makes the files of a run look two days old.
void ageRun(const Sandbox &sandbox)
{
	for (const QString &name : found(sandbox.path(), anyScratchFolder)) {
		QVERIFY(sandbox.age(name, 48h));
	}
	for (const QString &name : found(sandbox.shortsFolder(), anyPart)) {
		QVERIFY(sandbox.age(u"Shorts/"_s + name, 48h));
	}
}

/// Leaves behind what a run does that is killed while making `part`.
void leaveBehind(const Sandbox &sandbox, const QString &name, const QString &part)
{
	sandbox.writeFile(name + u"/speech.wav"_s, "x");
	sandbox.writeFile(name + u".lock"_s, "scratch folder of kestrune-sample-helper\n" + part.toUtf8());
}
} // namespace

void ScratchFolderTest::removesWhatAKilledRunLeftBehind()
{
	Sandbox sandbox;
	const std::unique_ptr<QProcess> process = stoppedInTheMiddle(sandbox);
	QVERIFY(process);
	QCOMPARE(found(sandbox.path(), anyScratchFolder).size(), 2);
	process->kill();
	finish(*process);
	const QString part = sandbox.shortsFolder() + u'/' + found(sandbox.shortsFolder(), anyPart).first();
	const QString folder = sandbox.path(found(sandbox.path(), anyScratchFolder).first());

	// The next clip may have another output folder.
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OUTPUT"_s, sandbox.path(u"Elsewhere"_s));
	const Run run = sandbox.run(clipOf(videos::silent()));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(found(sandbox.shortsFolder(), anyPart), QStringList());
	QCOMPARE(found(sandbox.path(), anyScratchFolder), QStringList());
	QVERIFY(run.errorOutput.contains("removing " + part.toUtf8()));
	QVERIFY(run.errorOutput.contains("removing " + folder.toUtf8()));
}

void ScratchFolderTest::leavesASuspendedRunItsFiles()
{
	Sandbox sandbox;
	const std::unique_ptr<QProcess> process = stoppedInTheMiddle(sandbox);
	QVERIFY(process);
	ageRun(sandbox);
	// Else the second clip would wait for the first.
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CLIPS_AT_ONCE"_s, u"2"_s);
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), u"done"_s);
	QCOMPARE(found(sandbox.shortsFolder(), anyPart).size(), 1);
	QCOMPARE(found(sandbox.path(), anyScratchFolder).size(), 2);

	sandbox.writeFile(u"go on"_s, {});
	const Run run = finish(*process);
	QCOMPARE(eventName(run), u"done"_s);
	QVERIFY(videos::details(shortPath(run)).duration_s > 0);
	QCOMPARE(found(sandbox.shortsFolder(), anyPart), QStringList());
	QCOMPARE(found(sandbox.path(), anyScratchFolder), QStringList());
}

void ScratchFolderTest::leavesWhatIsNotItsOwn_data()
{
	QTest::addColumn<QString>("file");
	QTest::addColumn<QString>("aged");
	QTest::newRow("a user's folder") << u"run-any-percent 2025/pb.mkv"_s << u"run-any-percent 2025"_s;
	QTest::newRow("a user's folder with such a name") << u"run-0123abcd/pb.mkv"_s << u"run-0123abcd"_s;
	QTest::newRow("a user's file with a lock's name") << u"run-0123abcd.lock"_s << u"run-0123abcd.lock"_s;
	QTest::newRow("a user's file") << u"Shorts/short-film.part"_s << u"Shorts/short-film.part"_s;
	const QString part = u"Shorts/short-20200101-000000-00000000.part"_s;
	QTest::newRow("a user's file with such a name") << part << part;
	const QString finished = u"Shorts/short-20200101-000000-00000000.mp4"_s;
	QTest::newRow("a Short") << finished << finished;
	QTest::newRow("another folder") << u"downloads/setup.exe"_s << u"downloads"_s;
}

void ScratchFolderTest::leavesWhatIsNotItsOwn()
{
	QFETCH(const QString, file);
	QFETCH(const QString, aged);
	const Sandbox sandbox;
	sandbox.writeFile(file, "precious");
	QVERIFY(sandbox.age(aged, 48h));
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), u"done"_s);
	QCOMPARE(sandbox.readFile(file), "precious");
}

void ScratchFolderTest::neverRemovesTheReplay_data()
{
	QTest::addColumn<QString>("replay");
	QTest::newRow("a half-made Short") << u"Shorts/short-20200101-000000-00000000.part"_s;
	QTest::newRow("in a scratch folder") << u"run-01234567/replay.mkv"_s;
}

void ScratchFolderTest::neverRemovesTheReplay()
{
	QFETCH(const QString, replay);
	const Sandbox sandbox;
	QFile original(videos::silent());
	QVERIFY(original.open(QIODevice::ReadOnly));
	const QString path = sandbox.writeFile(replay, original.readAll());
	leaveBehind(sandbox, u"run-01234567"_s, sandbox.path(u"Shorts/short-20200101-000000-00000000.part"_s));
	// A symbolic link to it, as users may write it.
	const QString link = sandbox.path(u"link.mkv"_s);
	QVERIFY(QFile::link(path, link));
	for (const QString &name : {path, link}) {
		QCOMPARE(eventName(sandbox.run(clipOf(name))), u"done"_s);
		QCOMPARE(videos::checksum(path), videos::checksum(videos::silent()));
	}
}

void ScratchFolderTest::followsNoLinkToOtherFolders()
{
	const Sandbox sandbox;
	const Sandbox elsewhere;
	const QString precious = elsewhere.writeFile(u"precious"_s, "x");
	leaveBehind(sandbox, u"run-01234567"_s, precious);
	QVERIFY(QFile::link(elsewhere.path(), sandbox.path(u"run-01234567/link"_s)));
	sandbox.writeFile(u"run-89abcdef.lock"_s, sandbox.readFile(u"run-01234567.lock"_s));
	QVERIFY(QFile::link(elsewhere.path(), sandbox.path(u"run-89abcdef"_s)));
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), u"done"_s);
	QVERIFY(!QFile::exists(sandbox.path(u"run-01234567"_s)));
	QVERIFY(QFile::exists(precious));
}

KESTRUNE_TEST(ScratchFolderTest)
#include "scratch_folder.moc"
