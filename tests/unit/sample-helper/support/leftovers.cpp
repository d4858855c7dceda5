#include <QFile>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

/// The next clip removes what killed runs left behind, and nothing else.
class LeftoversTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void removesOldLeftoversOnly_data();
	void removesOldLeftoversOnly();
	void neverRemovesTheReplay_data();
	void neverRemovesTheReplay();
	void followsNoLinkToOtherFolders();
};

namespace {

QStringList clipOf(const QString &replay)
{
	return processArguments(replay, 1, lookArguments("gameplay", "none"));
}

} // namespace

void LeftoversTest::removesOldLeftoversOnly_data()
{
	QTest::addColumn<QString>("aged");
	QTest::addColumn<QString>("file");
	QTest::addColumn<int>("minutes");
	QTest::addColumn<bool>("stays");
	const QString part = u"Shorts/short-20200101-000000-0.part"_s;
	QTest::newRow("old part") << part << part << 11 << false;
	QTest::newRow("part that is being made") << part << part << 5 << true;
	const QString finished = u"Shorts/short-20200101-000000-0.mp4"_s;
	QTest::newRow("Short") << finished << finished << 3000 << true;
	const QString scratch = u"run-AbCdEf"_s;
	const QString speech = u"run-AbCdEf/speech.wav"_s;
	QTest::newRow("old scratch folder of a clip") << scratch << speech << 25 * 60 << false;
	QTest::newRow("scratch folder in use") << scratch << speech << 23 * 60 << true;
	const QString preview = u"previews/run-AbCdEf"_s;
	QTest::newRow("old scratch folder of a preview") << preview << preview + u"/captions.ass"_s << 25 * 60 << false;
	const QString other = u"downloads"_s;
	QTest::newRow("other folder") << other << other + u"/setup.exe"_s << 25 * 60 << true;
}

void LeftoversTest::removesOldLeftoversOnly()
{
	QFETCH(const QString, aged);
	QFETCH(const QString, file);
	QFETCH(const int, minutes);
	QFETCH(const bool, stays);
	const Sandbox sandbox;
	const QString path = sandbox.writeFile(file, "x");
	QVERIFY(sandbox.age(aged, std::chrono::minutes(minutes)));
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), u"done"_s);
	QCOMPARE(QFile::exists(path), stays);
	QCOMPARE(QFile::exists(sandbox.path(aged)), stays);
}

void LeftoversTest::neverRemovesTheReplay_data()
{
	QTest::addColumn<QString>("replay");
	QTest::addColumn<QString>("aged");
	const QString part = u"Shorts/short-20200101-000000-0.part"_s;
	QTest::newRow("named like a part") << part << part;
	QTest::newRow("in a folder named like a scratch folder") << u"run-1/replay.mkv"_s << u"run-1"_s;
}

void LeftoversTest::neverRemovesTheReplay()
{
	QFETCH(const QString, replay);
	QFETCH(const QString, aged);
	const Sandbox sandbox;
	QFile original(videos::silent());
	QVERIFY(original.open(QIODevice::ReadOnly));
	const QString path = sandbox.writeFile(replay, original.readAll());
	QVERIFY(sandbox.age(aged, 48h));
	// A symbolic link to it, as users may write it.
	const QString link = sandbox.path(u"link.mkv"_s);
	QVERIFY(QFile::link(path, link));
	for (const QString &name : {path, link}) {
		QCOMPARE(eventName(sandbox.run(clipOf(name))), u"done"_s);
		QCOMPARE(videos::checksum(path), videos::checksum(videos::silent()));
	}
}

void LeftoversTest::followsNoLinkToOtherFolders()
{
	const Sandbox sandbox;
	const Sandbox elsewhere;
	const QString precious = elsewhere.writeFile(u"precious"_s, "x");
	QVERIFY(QFile::link(elsewhere.path(), sandbox.path(u"run-AbCdEf"_s)));
	sandbox.writeFile(u"run-GhIjKl/file"_s, "x");
	QVERIFY(QFile::link(elsewhere.path(), sandbox.path(u"run-GhIjKl/link"_s)));
	QVERIFY(sandbox.age(u"run-AbCdEf"_s, 48h));
	QVERIFY(sandbox.age(u"run-GhIjKl"_s, 48h));
	QCOMPARE(eventName(sandbox.run(clipOf(videos::silent()))), u"done"_s);
	QVERIFY(!QFile::exists(sandbox.path(u"run-GhIjKl"_s)));
	QVERIFY(QFile::exists(precious));
}

KESTRUNE_TEST(LeftoversTest)
#include "leftovers.moc"
