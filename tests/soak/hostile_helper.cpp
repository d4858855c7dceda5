#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QTimer>

#include "host/dock_test.hpp"
#include "process_figures.hpp"
#include "scale.hpp"

#include <random>

namespace {
constexpr int MiB = 1024 * 1024;

/// Measures how late the event loop fires a due timer.
class EventLoopGaps : public QObject {
	Q_OBJECT

public:
	EventLoopGaps()
	{
		connect(&timer_, &QTimer::timeout, this, [this] {
			longest_ms_ = qMax(longest_ms_, sinceLast_.restart());
			++ticks_;
		});
		timer_.setTimerType(Qt::PreciseTimer);
		timer_.start(1);
		sinceLast_.start();
	}
	qint64 longest_ms() const { return longest_ms_; }
	qint64 ticks() const { return ticks_; }

private:
	QTimer timer_{};
	QElapsedTimer sinceLast_{};
	qint64 longest_ms_{0};
	qint64 ticks_{0};
};

QByteArray someBytes(int size)
{
	std::minstd_rand random(20);
	std::uniform_int_distribution<int> byte(0, 255);
	QByteArray bytes(size, Qt::Uninitialized);
	for (char &each : bytes) {
		each = static_cast<char>(byte(random));
	}
	return bytes;
}
} // namespace

/// Broken and malicious helpers: the user interface responds while they write, memory stays bounded, and the dock keeps
/// working.
class HostileHelperTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void leavesTheDockAnswering_data()
	{
		QTest::addColumn<HelperScript>("script");
		QTest::addColumn<bool>("ends");

		const QByteArray recent = "{\"event\":\"recent\",\"folder\":\"/shorts\",\"items\":[]}\n";
		const QByteArray unknown = "{\"event\":\"noise\",\"text\":\"" + QByteArray(1000, 'n') + "\"}\n";
		const QByteArray noise = QByteArray(1023, 'n') + '\n';
		const QByteArray chunk(MiB, 'x');
		// Never shorter than what the module takes for a line.
		const int lineChunks = qMax(16, scaled(256));

		QTest::newRow("1 GiB of noise, line by line")
			<< HelperScript().repeat(noise.repeated(1024), scaled(1024)) << true;
		QTest::newRow("1 GiB of events that nobody knows")
			<< HelperScript().repeat(unknown.repeated(1024), scaled(1024)) << true;
		QTest::newRow("a million events that refill a list")
			<< HelperScript().repeat(recent.repeated(1000), scaled(1000)) << true;
		QTest::newRow("a line of 256 MiB") << HelperScript()
							      .write("{\"event\":\"recent\",\"folder\":\"")
							      .repeat(chunk, lineChunks)
							      .write("\"}\n")
						   << true;
		QTest::newRow("256 MiB and never a newline") << HelperScript().repeat(chunk, lineChunks) << true;
		QTest::newRow("invalid UTF-8, 64 MiB") << HelperScript().repeat(someBytes(MiB), scaled(64)) << true;
		QTest::newRow("objects nested a million deep")
			<< HelperScript().repeat(
				   "{\"event\":" + QByteArray("{\"a\":").repeated(scaled(1'000'000)) + '\n', 10)
			<< true;
		QTest::newRow("arrays nested just as deep as Qt allows")
			<< HelperScript().repeat("{\"event\":\"recent\",\"items\":" + QByteArray(1020, '[') +
							 QByteArray(1020, ']') + "}\n",
						 100)
			<< true;
		QTest::newRow("10,000 events in one write") << HelperScript().write(recent.repeated(10'000)) << true;
		QTest::newRow("output after its end, 256 MiB")
			<< HelperScript().write(recent).repeat(noise.repeated(1024), lineChunks) << true;
		QTest::newRow("standard output closed, alive")
			<< HelperScript().write(recent).closeOutput().hang() << false;
		QTest::newRow("never-ending events") << HelperScript().flood(recent) << false;
	}
	void leavesTheDockAnswering()
	{
		QFETCH(HelperScript, script);
		QFETCH(bool, ends);
		helper().on(u"--recent"_s, script);
		QVERIFY(loadReady());
		QCoreApplication::processEvents();
		resetPeakMemory();
		const qint64 before_KiB = processFigures().memory_KiB;

		const EventLoopGaps gaps;
		QVERIFY(invoke("refreshRecent"));
		if (ends) {
			QTRY_VERIFY_WITH_TIMEOUT(!isRunning(u"--recent"_s), 600'000);
		} else {
			QTRY_VERIFY_WITH_TIMEOUT(gaps.ticks() > scaled(10'000), 600'000);
		}

		const qint64 grown_KiB = processFigures().peakMemory_KiB - before_KiB;
		qInfo("longest gap of the event loop %lld ms, %lld turns, peak memory +%lld MiB",
		      static_cast<long long>(gaps.longest_ms()), static_cast<long long>(gaps.ticks()),
		      static_cast<long long>(grown_KiB / 1024));
		QVERIFY(gaps.longest_ms() < 1000);
		QVERIFY2(grown_KiB < qint64{64} * 1024, qPrintable(QString::number(grown_KiB)));

		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		QVERIFY(invoke("refreshStatus"));
		TRY_STATUS(u"Ready. Press Clip that or your Kestrune hotkey."_s, informationColour);
	}
};

KESTRUNE_TEST(HostileHelperTest)
#include "hostile_helper.moc"
