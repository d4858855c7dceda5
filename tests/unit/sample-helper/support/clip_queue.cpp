#include <QDir>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

using namespace Qt::StringLiterals;

/// One clip is made at a time, the others wait for it.
class ClipQueueTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void makesOneAfterTheOther();
	void makesAsManyAtOnceAsIsSet();
	void waitsForNoRunThatWasKilled();
	void doesNotWaitForEver();
	void needsNoQueue();
};

namespace {
/// A sandbox where each encoding writes a line to "order.txt" when it begins and when it ends, and takes until the file
/// "go" is there. What comes before does not wait.
class Station : public Sandbox {
public:
	Station()
	{
		linkAccount(*this);
		useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
		useTool(u"ffmpeg"_s, "case \"$*\" in\n"
				     "*libx264*) echo begin >> \"$KESTRUNE_SAMPLE_HELPER_HOME/order.txt\"\n"
				     "  while [ ! -e \"$KESTRUNE_SAMPLE_HELPER_HOME/go\" ]; do sleep 0.05; done\n"
				     "  ffmpeg \"$@\"; result=$?\n"
				     "  echo end >> \"$KESTRUNE_SAMPLE_HELPER_HOME/order.txt\"; exit $result;;\n"
				     "*) exec ffmpeg \"$@\";;\n"
				     "esac");
	}

	std::unique_ptr<QProcess> clip() const
	{
		return start(processArguments(videos::silent(), 1, lookArguments("gameplay", "none")));
	}

	QByteArray order() const { return readFile(u"order.txt"_s).replace('\n', ' ').trimmed(); }
	bool logSays(const QByteArray &text) const { return readFile(u"sample-helper.log"_s).contains(text); }
};
} // namespace

void ClipQueueTest::makesOneAfterTheOther()
{
	const Station station;
	const std::unique_ptr<QProcess> first = station.clip();
	QTRY_COMPARE(station.order(), QByteArray("begin"));
	const std::unique_ptr<QProcess> second = station.clip();
	QTRY_VERIFY(station.logSays("waiting for 1 clip that came first"));
	const std::unique_ptr<QProcess> third = station.clip();
	QTRY_VERIFY(station.logSays("waiting for 2 clips that came first"));
	QCOMPARE(station.order(), QByteArray("begin"));

	station.writeFile(u"go"_s, "");
	for (QProcess *process : {first.get(), second.get(), third.get()}) {
		QCOMPARE(eventName(finish(*process)), u"done"_s);
	}
	QCOMPARE(station.order(), QByteArray("begin end begin end begin end"));
	QVERIFY(station.logSays("its turn after"));
	QCOMPARE(QDir(station.path(u"queue"_s)).entryList({u"*.ticket"_s}, QDir::Files), QStringList());
}

void ClipQueueTest::makesAsManyAtOnceAsIsSet()
{
	Station station;
	station.setVariable(u"KESTRUNE_SAMPLE_HELPER_CLIPS_AT_ONCE"_s, u"2"_s);
	const std::unique_ptr<QProcess> first = station.clip();
	const std::unique_ptr<QProcess> second = station.clip();
	QTRY_COMPARE(station.order(), QByteArray("begin begin"));
	station.writeFile(u"go"_s, "");
	QCOMPARE(eventName(finish(*first)), u"done"_s);
	QCOMPARE(eventName(finish(*second)), u"done"_s);
}

void ClipQueueTest::waitsForNoRunThatWasKilled()
{
	const Station station;
	const std::unique_ptr<QProcess> first = station.clip();
	QTRY_COMPARE(station.order(), QByteArray("begin"));
	const std::unique_ptr<QProcess> second = station.clip();
	QTRY_VERIFY(station.logSays("waiting for 1 clip that came first"));
	first->kill();
	QVERIFY(first->waitForFinished(patience_ms));
	QTRY_VERIFY(station.order().startsWith("begin begin"));
	station.writeFile(u"go"_s, "");
	QCOMPARE(eventName(finish(*second)), u"done"_s);
}

void ClipQueueTest::doesNotWaitForEver()
{
	Station station;
	station.setVariable(u"KESTRUNE_SAMPLE_HELPER_QUEUE_LIMIT_MS"_s, u"500"_s);
	const std::unique_ptr<QProcess> first = station.clip();
	QTRY_COMPARE(station.order(), QByteArray("begin"));
	const std::unique_ptr<QProcess> second = station.clip();
	QTRY_COMPARE(station.order(), QByteArray("begin begin"));
	QVERIFY(station.logSays("not waiting any longer"));
	station.writeFile(u"go"_s, "");
	QCOMPARE(eventName(finish(*first)), u"done"_s);
	QCOMPARE(eventName(finish(*second)), u"done"_s);
}

void ClipQueueTest::needsNoQueue()
{
	const Station station;
	station.writeFile(u"go"_s, "");
	// No folder can be where a file is.
	station.writeFile(u"queue"_s, "");
	QCOMPARE(eventName(finish(*station.clip())), u"done"_s);
	QVERIFY(station.logSays("no place in the queue"));
}

KESTRUNE_TEST(ClipQueueTest)
#include "clip_queue.moc"
