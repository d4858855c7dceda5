#include <QFile>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "timecoded.hpp"
#include "videos.hpp"

#include <cmath>

using namespace Qt::StringLiterals;

/// What a Short lacks of what was asked for is told with it: nobody should find out from the viewers.
class DamagedReplaysTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void saysThatTheReplayIsShorter();
	void saysItWhileOffline();
	void saysWhatDamageCosts_data();
	void saysWhatDamageCosts();
	void saysThatTheReplayShrankMeanwhile();
	void saysThatTheSoundEndsEarly();
};

namespace {
QByteArray bytesOf(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// How many of the asked seconds are not shown: each frame counts for as long as it should.
double missing_s(const timecoded::Content &content, int asked_s)
{
	QList<int> seen{};
	for (const int number : content.numbers) {
		if (number >= (timecoded::length_s - asked_s) * timecoded::framesPerSecond && !seen.contains(number)) {
			seen += number;
		}
	}
	return asked_s - static_cast<double>(seen.size()) / timecoded::framesPerSecond;
}

Run lastSeconds(const Sandbox &sandbox, const QString &replay, int asked_s)
{
	return sandbox.run(processArguments(replay, asked_s, lookArguments("gameplay", "none")));
}
} // namespace

void DamagedReplaysTest::saysThatTheReplayIsShorter()
{
	const Sandbox sandbox;
	linkAccount(sandbox);
	QCOMPARE(note(lastSeconds(sandbox, videos::regions(), 120)),
		 u"4.0 s instead of 120 s, the replay has no more"_s);
	QCOMPARE(note(lastSeconds(sandbox, videos::regions(), 4)), QString());
}

void DamagedReplaysTest::saysItWhileOffline()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OFFLINE"_s, u"1"_s);
	const Run run = lastSeconds(sandbox, videos::regions(), 30);
	QCOMPARE(eventName(run), u"pending"_s);
	QCOMPARE(note(run), u"4.0 s instead of 30 s, the replay has no more"_s);
}

void DamagedReplaysTest::saysWhatDamageCosts_data()
{
	QTest::addColumn<QString>("replay");
	// The part of the bytes that is lost.
	QTest::addColumn<double>("from");
	QTest::addColumn<double>("to");
	QTest::addColumn<int>("asked_s");
	struct Container {
		const char *name{};
		timecoded::Kind kind{};
	};
	// Not mp4 and mov, whose index is at their end: without it they are no video, and with it an OBS that writes
	// them has finished.
	const Container containers[]{{"mkv", {"matroska", "", 0, 20}},
				     {"fragmented mp4", {"mp4", timecoded::fragmented, 0, 20}},
				     {"flv", {"flv", "", 0, 20}},
				     {"ts", {"mpegts", "", 0, 20}}};
	for (const Container &container : containers) {
		const QString replay = timecoded::replay(container.kind);
		QTest::addRow("%s, truncated", container.name) << replay << 0.12 << 1.0 << timecoded::length_s;
		QTest::addRow("%s, zeroed in the middle", container.name) << replay << 0.8 << 0.9 << 8;
	}
	QTest::addRow("mp4, zeroed in the middle") << timecoded::replay({"mp4", "", 0, 20}) << 0.8 << 0.9 << 8;
}

void DamagedReplaysTest::saysWhatDamageCosts()
{
	QFETCH(const QString, replay);
	QFETCH(const double, from);
	QFETCH(const double, to);
	QFETCH(const int, asked_s);
	QByteArray content = bytesOf(replay);
	const auto start = static_cast<qsizetype>(from * static_cast<double>(content.size()));
	const auto end = static_cast<qsizetype>(to * static_cast<double>(content.size()));
	content = end == content.size() ? content.first(start)
					: content.first(start) + QByteArray(end - start, '\0') + content.sliced(end);
	const Sandbox sandbox;
	linkAccount(sandbox);
	const Run run = lastSeconds(sandbox, sandbox.writeFile(u"damaged.bin"_s, content), asked_s);
	if (eventName(run) == u"error"_s) {
		QVERIFY(sandbox.shortsFolderContent().isEmpty());
		return;
	}
	const double lost_s = missing_s(timecoded::contentOf(shortPath(run)), asked_s);
	QVERIFY2(lost_s > 1.5, qPrintable(QString::number(lost_s)));
	const bool isTold = note(run).contains(u" s instead of "_s) || note(run).contains(u"the replay is damaged"_s);
	QVERIFY2(isTold, qPrintable(u"%1 s are missing: %2"_s.arg(lost_s).arg(note(run))));
}

void DamagedReplaysTest::saysThatTheReplayShrankMeanwhile()
{
	Sandbox sandbox;
	linkAccount(sandbox);
	const QString replay = sandbox.writeFile(u"shrinking.ts"_s, bytesOf(timecoded::replay({"mpegts", "", 0, 20})));
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s,
			"case \"$*\" in *.part) truncate -s 200K '" + replay.toUtf8() + "';; esac\nexec ffmpeg \"$@\"");
	const Run run = lastSeconds(sandbox, replay, 20);
	QCOMPARE(eventName(run), u"done"_s);
	const double length_s = videos::details(shortPath(run)).duration_s;
	QVERIFY2(length_s > 1 && length_s < 19, qPrintable(QString::number(length_s)));
	QVERIFY2(note(run).endsWith(u" s instead of 20 s, the rest of the replay couldn't be read"_s),
		 qPrintable(note(run)));
	QVERIFY2(std::abs(note(run).section(u' ', 0, 0).toDouble() - length_s) < 0.2, qPrintable(note(run)));
}

void DamagedReplaysTest::saysThatTheSoundEndsEarly()
{
	const Sandbox sandbox;
	linkAccount(sandbox);
	const QString replay = sandbox.path(u"half silent.mkv"_s);
	videos::ffmpeg({u"-i"_s, videos::regions(), u"-t"_s, u"2"_s, u"-i"_s, videos::regions(), u"-map"_s, u"0:v"_s,
			u"-map"_s, u"1:a"_s, u"-c"_s, u"copy"_s, replay});
	QCOMPARE(note(lastSeconds(sandbox, replay, 4)), u"its sound ends after 2.0 s"_s);
}

KESTRUNE_TEST(DamagedReplaysTest)
#include "damaged_replays.moc"
