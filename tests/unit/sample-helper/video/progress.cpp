#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "host/patience.hpp"
#include "host/test_program.hpp"
#include "video/progress.hpp"

#include <atomic>

using namespace Qt::StringLiterals;

class ProgressTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void readsTheLastTime_data();
	void readsTheLastTime();
	void tellsWhatIsLeft();
	void tellsInTheLogUntilItEnds();
};

void ProgressTest::readsTheLastTime_data()
{
	QTest::addColumn<QByteArray>("progress");
	QTest::addColumn<double>("made_s");
	QTest::newRow("nothing yet") << QByteArray() << -1.0;
	QTest::newRow("no frame yet") << QByteArray("frame=0\nout_time_us=N/A\nprogress=continue\n") << -1.0;
	QTest::newRow("one block") << QByteArray("frame=30\nout_time_us=1500000\nprogress=continue\n") << 1.5;
	QTest::newRow("the last block") << QByteArray("out_time_us=1500000\nx=1\nout_time_us=2500000\n") << 2.5;
	QTest::newRow("half a line") << QByteArray("x=1\nout_time_us=25") << -1.0;
	QTest::newRow("before its beginning") << QByteArray("out_time_us=-1500000\n") << -1.0;
}

void ProgressTest::readsTheLastTime()
{
	QFETCH(const QByteArray, progress);
	QFETCH(const double, made_s);
	QCOMPARE(madeTime_s(progress).value_or(-1), made_s);
}

void ProgressTest::tellsWhatIsLeft()
{
	QCOMPARE(progressText(12, 60, 12), u"12 of 60 s made (20 %), about 48 s to go"_s);
	QCOMPARE(progressText(60, 60, 30), u"60 of 60 s made (100 %), about 0 s to go"_s);
	QCOMPARE(progressText(61, 60, 30), u"60 of 60 s made (100 %), about 0 s to go"_s);
	QCOMPARE(progressText(0.1, 60, 5), u"0 of 60 s made (0 %)"_s);
	QCOMPARE(progressText(5, 0, 5), u"0 of 0 s made (0 %)"_s);
}

void ProgressTest::tellsInTheLogUntilItEnds()
{
	static std::atomic<int> told = 0;
	const QtMessageHandler before =
		qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
			told += message.startsWith(u"6 of 12 s made (50 %), about "_s) ? 1 : 0;
		});
	const QTemporaryDir folder;
	const QString path = folder.filePath(u"progress.txt"_s);
	bool ended = false;
	{
		const ProgressLog log(path, 12, 20);
		QFile file(path);
		ended = file.open(QIODevice::WriteOnly) && file.write("out_time_us=6000000\n") > 0;
		file.close();
		ended = ended && QTest::qWaitFor([] { return told >= 2; }, patience_ms);
	}
	const int atTheEnd = told;
	QTest::qWait(200);
	qInstallMessageHandler(before);
	QVERIFY(ended);
	QCOMPARE(told, atTheEnd);
}

KESTRUNE_TEST(ProgressTest)
#include "progress.moc"
