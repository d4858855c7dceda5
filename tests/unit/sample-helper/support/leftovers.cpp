#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

#include <QFile>
#include <QTest>

using namespace std::chrono_literals;

/// What runs that were killed left behind goes away with the next clip, and nothing else does.
class LeftoversTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void removes_old_leftovers_only_data();
	void removes_old_leftovers_only();
	void never_removes_the_replay_data();
	void never_removes_the_replay();
	void follows_no_link_to_other_folders();
};

namespace {

QStringList clipOf(const QString &replay)
{
	return processArguments(replay, 1, lookArguments("gameplay", "none"));
}

} // namespace

void LeftoversTest::removes_old_leftovers_only_data()
{
	QTest::addColumn<QString>("aged");
	QTest::addColumn<QString>("file");
	QTest::addColumn<int>("minutes");
	QTest::addColumn<bool>("stays");
	const QString part = QStringLiteral("Shorts/short-20200101-000000-0.part");
	QTest::newRow("old part") << part << part << 11 << false;
	QTest::newRow("part that is being made") << part << part << 5 << true;
	const QString finished = QStringLiteral("Shorts/short-20200101-000000-0.mp4");
	QTest::newRow("Short") << finished << finished << 3000 << true;
	const QString scratch = QStringLiteral("run-AbCdEf");
	const QString speech = QStringLiteral("run-AbCdEf/speech.wav");
	QTest::newRow("old scratch folder of a clip") << scratch << speech << 25 * 60 << false;
	QTest::newRow("scratch folder in use") << scratch << speech << 23 * 60 << true;
	const QString preview = QStringLiteral("previews/run-AbCdEf");
	QTest::newRow("old scratch folder of a preview")
		<< preview << preview + QStringLiteral("/captions.ass") << 25 * 60 << false;
	const QString other = QStringLiteral("downloads");
	QTest::newRow("other folder") << other << other + QStringLiteral("/setup.exe") << 25 * 60 << true;
}

void LeftoversTest::removes_old_leftovers_only()
{
	QFETCH(const QString, aged);
	QFETCH(const QString, file);
	QFETCH(const int, minutes);
	QFETCH(const bool, stays);
	const Sandbox sandbox;
	const QString path = sandbox.writeFile(file, "x");
	QVERIFY(sandbox.age(aged, std::chrono::minutes(minutes)));
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), QStringLiteral("done"));
	QCOMPARE(QFile::exists(path), stays);
	QCOMPARE(QFile::exists(sandbox.path(aged)), stays);
}

void LeftoversTest::never_removes_the_replay_data()
{
	QTest::addColumn<QString>("replay");
	QTest::addColumn<QString>("aged");
	const QString part = QStringLiteral("Shorts/short-20200101-000000-0.part");
	QTest::newRow("named like a part") << part << part;
	QTest::newRow("in a folder named like a scratch folder")
		<< QStringLiteral("run-1/replay.mkv") << QStringLiteral("run-1");
}

void LeftoversTest::never_removes_the_replay()
{
	QFETCH(const QString, replay);
	QFETCH(const QString, aged);
	const Sandbox sandbox;
	QFile original(videos::silent());
	QVERIFY(original.open(QIODevice::ReadOnly));
	const QString path = sandbox.writeFile(replay, original.readAll());
	QVERIFY(sandbox.age(aged, 48h));
	// By another way to it, as a user may write it.
	const QString link = sandbox.path(QStringLiteral("link.mkv"));
	QVERIFY(QFile::link(path, link));
	for (const QString &name : {path, link}) {
		QCOMPARE(eventName(sandbox.run(clipOf(name))), QStringLiteral("done"));
		QCOMPARE(videos::checksum(path), videos::checksum(videos::silent()));
	}
}

void LeftoversTest::follows_no_link_to_other_folders()
{
	const Sandbox sandbox;
	const Sandbox elsewhere;
	const QString precious = elsewhere.writeFile(QStringLiteral("precious"), "x");
	QVERIFY(QFile::link(elsewhere.path(), sandbox.path(QStringLiteral("run-AbCdEf"))));
	sandbox.writeFile(QStringLiteral("run-GhIjKl/file"), "x");
	QVERIFY(QFile::link(elsewhere.path(), sandbox.path(QStringLiteral("run-GhIjKl/link"))));
	QVERIFY(sandbox.age(QStringLiteral("run-AbCdEf"), 48h));
	QVERIFY(sandbox.age(QStringLiteral("run-GhIjKl"), 48h));
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), QStringLiteral("done"));
	QVERIFY(!QFile::exists(sandbox.path(QStringLiteral("run-GhIjKl"))));
	QVERIFY(QFile::exists(precious));
}

KESTRUNE_TEST(LeftoversTest)
#include "leftovers.moc"
