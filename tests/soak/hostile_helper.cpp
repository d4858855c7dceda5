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

/// Broken and malicious helpers: the user interface responds while they write, memory stays bounded by the longest
/// line, and the dock keeps working.
class HostileHelperTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void leavesTheDockAnswering_data()
	{
		QTest::addColumn<HelperScript>("script");
		QTest::addColumn<qint64>("longestLine_bytes");
		QTest::addColumn<bool>("ends");

		const QByteArray recent = "{\"event\":\"recent\",\"folder\":\"/shorts\",\"items\":[]}\n";
		const QByteArray unknown = "{\"event\":\"noise\",\"text\":\"" + QByteArray(1000, 'n') + "\"}\n";
		const QByteArray noise = QByteArray(1023, 'n') + '\n';
		const QByteArray chunk(MiB, 'x');
		const int lineChunks = scaled(256);
		const auto line_bytes = static_cast<qint64>(lineChunks) * MiB;

		QTest::newRow("1 GiB of noise, line by line")
			<< HelperScript().repeat(noise.repeated(1024), scaled(1024)) << 1024LL << true;
		QTest::newRow("1 GiB of events that nobody knows")
			<< HelperScript().repeat(unknown.repeated(1024), scaled(1024)) << 1024LL << true;
		QTest::newRow("a million events that refill a list")
			<< HelperScript().repeat(recent.repeated(1000), scaled(1000)) << 100LL << true;
		QTest::newRow("a line of 256 MiB") << HelperScript()
							      .write("{\"event\":\"recent\",\"folder\":\"")
							      .repeat(chunk, lineChunks)
							      .write("\"}\n")
						   << line_bytes << true;
		QTest::newRow("256 MiB and never a newline")
			<< HelperScript().repeat(chunk, lineChunks) << line_bytes << true;
		QTest::newRow("invalid UTF-8, 64 MiB")
			<< HelperScript().repeat(someBytes(MiB), scaled(64)) << static_cast<qint64>(MiB) << true;
		QTest::newRow("objects nested a million deep")
			<< HelperScript().repeat(
				   "{\"event\":" + QByteArray("{\"a\":").repeated(scaled(1'000'000)) + '\n', 10)
			<< 5'000'000LL << true;
		QTest::newRow("arrays nested just as deep as Qt allows")
			<< HelperScript().repeat("{\"event\":\"recent\",\"items\":" + QByteArray(1020, '[') +
							 QByteArray(1020, ']') + "}\n",
						 100)
			<< 5000LL << true;
		QTest::newRow("10,000 events in one write")
			<< HelperScript().write(recent.repeated(10'000)) << 100LL << true;
		QTest::newRow("output after its end, 256 MiB")
			<< HelperScript().write(recent).repeat(noise.repeated(1024), lineChunks) << 1024LL << true;
		QTest::newRow("standard output closed, alive")
			<< HelperScript().write(recent).closeOutput().hang() << 100LL << false;
		QTest::newRow("never-ending events") << HelperScript().flood(recent) << 100LL << false;
	}
	void leavesTheDockAnswering()
	{
		QFETCH(HelperScript, script);
		QFETCH(qint64, longestLine_bytes);
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
		// The longest gap: parsing a line of 256 MiB.
		QVERIFY(gaps.longest_ms() < 10'000);
		// The line in UTF-8 (in a buffer that doubles) and its parsed text in UTF-16, twice while it grows.
		QVERIFY2(grown_KiB < 7 * longestLine_bytes / 1024 + 32 * 1024, qPrintable(QString::number(grown_KiB)));

		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		QVERIFY(invoke("refreshStatus"));
		TRY_STATUS(u"Ready. Press Clip that or your Kestrune hotkey."_s, informationColour);
	}
};

KESTRUNE_TEST(HostileHelperTest)
#include "hostile_helper.moc"
