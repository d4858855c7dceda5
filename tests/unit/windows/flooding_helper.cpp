#include <QListWidget>
#include <QTimer>

#include "host/dock_test.hpp"

#include <windows.h>

#include <psapi.h>

namespace {
/// The processor time that this thread has used so far.
double used_ms()
{
	FILETIME begin{};
	FILETIME end{};
	FILETIME system{};
	FILETIME user{};
	GetThreadTimes(GetCurrentThread(), &begin, &end, &system, &user);
	const auto steps = [](const FILETIME &time) {
		return (static_cast<quint64>(time.dwHighDateTime) << 32) + time.dwLowDateTime;
	};
	return static_cast<double>(steps(system) + steps(user)) / 10000;
}

/// The most memory that this process has had so far.
qint64 mostUsed_MiB()
{
	PROCESS_MEMORY_COUNTERS counters{};
	GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
	return static_cast<qint64>(counters.PeakWorkingSetSize) / (1024 * 1024);
}
} // namespace

/// A helper that writes faster than the dock reads. Qt for Windows takes all of it into memory: the run has to end
/// before that is full, and the user interface must still answer.
class FloodingHelperTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void isEndedInTime_data()
	{
		QTest::addColumn<QByteArray>("line");
		QTest::newRow("noise") << QByteArray(1023, 'n') + '\n';
		QTest::newRow("unknown events") << "{\"event\":\"noise\",\"text\":\"" + QByteArray(1000, 'n') + "\"}\n";
		QTest::newRow("lists") << QByteArray("{\"event\":\"recent\",\"folder\":\"/shorts\",\"items\":[]}\n");
	}
	void isEndedInTime()
	{
		QFETCH(QByteArray, line);
		QVERIFY(loadReady());
		helper().on(u"--recent"_s, HelperScript().flood(line.repeated(65536 / line.size())));
		const qint64 before_MiB = mostUsed_MiB();

		// Processor time: other programs may hold up this one, too.
		double longest_ms = 0;
		double last_ms = used_ms();
		QTimer timer;
		connect(&timer, &QTimer::timeout, this, [&] {
			longest_ms = std::max(longest_ms, used_ms() - last_ms);
			last_ms = used_ms();
		});
		timer.start(1);
		QVERIFY(invoke("refreshRecent"));
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
		QTRY_VERIFY(!isRunning(u"--recent"_s));

		const qint64 grown_MiB = mostUsed_MiB() - before_MiB;
		qInfo("longest turn of the event loop: %.0f ms; memory: %lld MiB more", longest_ms, grown_MiB);
		QVERIFY2(longest_ms < 1000, qPrintable(QString::number(longest_ms)));
		QVERIFY2(grown_MiB < 1024, qPrintable(QString::number(grown_MiB)));

		const QJsonObject clip{{u"name"_s, u"after it"_s}, {u"path"_s, u"/shorts/after.mp4"_s}};
		helper().on(u"--recent"_s,
			    HelperScript().event({{u"event"_s, u"recent"_s}, {u"items"_s, QJsonArray{clip}}}));
		QVERIFY(invoke("refreshRecent"));
		const auto *list = dock()->findChild<QListWidget *>();
		QTRY_VERIFY(list->count() == 1 && list->item(0)->text() == u"after it"_s);
	}
};

KESTRUNE_TEST(FloodingHelperTest)
#include "flooding_helper.moc"
