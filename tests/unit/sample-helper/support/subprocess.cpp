#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "support/subprocess.hpp"
#include "videos.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

/// The programs that the helper starts: they neither keep it waiting for ever nor fill its memory nor slow the stream.
class SubprocessTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void keepsTheEndOfALongOutput();
	void stopsWhatStandsStill();
	void letsAGrowingFileGrow();
	void fillsNoMemoryWithWhatIsSaid();
	void runsProgramsAtLowPriority();
};

namespace {
subprocess::Result runScript(const QString &script, const subprocess::Limits &limits = {})
{
	return subprocess::run(u"/bin/sh"_s, {u"-c"_s, script}, {}, limits);
}

/// A sandbox whose ffmpeg first does this when it is to make a Short.
class Meddler : public Sandbox {
public:
	explicit Meddler(const QByteArray &script)
	{
		useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
		useTool(u"ffmpeg"_s, "cd \"$KESTRUNE_SAMPLE_HELPER_HOME\"\ncase \"$*\" in *.part)\n" + script +
					     "\n;; esac\nexec ffmpeg \"$@\"");
	}

	QStringList arguments() const
	{
		return processArguments(videos::silent(), 1, lookArguments("gameplay", "none"));
	}
};
} // namespace

void SubprocessTest::keepsTheEndOfALongOutput()
{
	const subprocess::Result result =
		runScript(u"head -c 100000000 /dev/zero; echo out; head -c 100000000 /dev/zero >&2; echo err >&2"_s);
	QVERIFY(result.succeeded());
	QCOMPARE(result.output.size(), subprocess::maxOutput_bytes);
	QVERIFY(result.output.endsWith("\0out\n"));
	QVERIFY(result.errorOutput.endsWith(u"err"_s));
	QVERIFY(result.errorOutput.size() <= qsizetype{64} * 1024);
}

void SubprocessTest::stopsWhatStandsStill()
{
	// Complaints are no progress.
	const subprocess::Result result = runScript(u"while :; do echo again >&2; sleep 0.05; done"_s, {-1, 1000, {}});
	QCOMPARE(result.outcome, subprocess::Outcome::Hung);
	QVERIFY(result.errorOutput.startsWith(u"again"_s));
}

void SubprocessTest::letsAGrowingFileGrow()
{
	const Sandbox sandbox;
	const QString file = sandbox.path(u"growing"_s);
	const QString script = u"for i in 1 2 3 4 5 6 7 8 9; do echo >> '%1'; sleep 1; done"_s.arg(file);
	QVERIFY(runScript(script, {-1, 6000, file}).succeeded());
	QCOMPARE(runScript(u"for i in 1 2 3 4 5 6 7 8 9; do echo; sleep 1; done"_s, {-1, 6000, {}}).output.size(), 9);
	QCOMPARE(runScript(script, {-1, 6000, sandbox.path(u"another"_s)}).outcome, subprocess::Outcome::Hung);
}

void SubprocessTest::fillsNoMemoryWithWhatIsSaid()
{
	const Meddler sandbox("yes 'error: something is wrong with this' | head -c 500000000 >&2\n"
			      "grep VmHWM /proc/$PPID/status > memory.txt");
	QCOMPARE(eventName(sandbox.run(sandbox.arguments())), u"done"_s);
	const QByteArray peak = sandbox.readFile(u"memory.txt"_s).simplified();
	const int peak_KiB = peak.split(' ').value(1).toInt();
#ifdef __SANITIZE_ADDRESS__
	// AddressSanitizer keeps 256 MiB of what is freed.
	constexpr int most_KiB = 450'000;
#else
	constexpr int most_KiB = 150'000;
#endif
	QVERIFY2(peak_KiB > 1000 && peak_KiB < most_KiB, peak.constData());
}

void SubprocessTest::runsProgramsAtLowPriority()
{
	const Meddler sandbox("nice > niceness.txt");
	const int own = sandbox.runProgram(u"nice"_s, {}).output.trimmed().toInt();
	QCOMPARE(eventName(sandbox.run(sandbox.arguments())), u"done"_s);
	QCOMPARE(sandbox.readFile(u"niceness.txt"_s).trimmed().toInt(), std::min(own + 10, 19));
}

KESTRUNE_TEST(SubprocessTest)
#include "subprocess.moc"
