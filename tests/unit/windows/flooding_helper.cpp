#include <QTimer>

#include "host/dock_test.hpp"

#include <windows.h>

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
} // namespace

/// A helper that writes faster than the dock reads: on Windows any amount may have come since the last look, and the
/// user interface must still answer.
class FloodingHelperTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void theUserInterfaceAnswers_data()
	{
		QTest::addColumn<QByteArray>("line");
		QTest::newRow("noise") << QByteArray(1023, 'n') + '\n';
		QTest::newRow("unknown events") << "{\"event\":\"noise\",\"text\":\"" + QByteArray(1000, 'n') + "\"}\n";
		QTest::newRow("lists") << QByteArray("{\"event\":\"recent\",\"folder\":\"/shorts\",\"items\":[]}\n");
	}
	void theUserInterfaceAnswers()
	{
		QFETCH(QByteArray, line);
		QVERIFY(loadReady());
		helper().on(u"--recent"_s, HelperScript().flood(line.repeated(65536 / line.size())));
		QVERIFY(invoke("refreshRecent"));
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);

		// Processor time: other programs may hold up this one, too.
		QList<double> turns_ms;
		double last_ms = used_ms();
		QTimer timer;
		connect(&timer, &QTimer::timeout, this, [&] {
			turns_ms << used_ms() - last_ms;
			last_ms = used_ms();
		});
		timer.start(1);
		QTRY_VERIFY(turns_ms.size() > 30);
		std::ranges::sort(turns_ms);
		qInfo("longest turns of the event loop: %.0f and %.0f ms", turns_ms.at(turns_ms.size() - 2),
		      turns_ms.back());
		QVERIFY2(turns_ms.back() < 1000, qPrintable(QString::number(turns_ms.back())));
	}
};

KESTRUNE_TEST(FloodingHelperTest)
#include "flooding_helper.moc"
