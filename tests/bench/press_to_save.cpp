#include <QFile>
#include <QJsonDocument>
#include <QLabel>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"

#include <obs-hotkey.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <semaphore>
#include <thread>

namespace {
using Clock = std::chrono::steady_clock;

qint64 now_ns()
{
	return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
}

/// Prints the median and the 99th percentile as one JSON line.
void report(const char *name, QList<qint64> times_ns)
{
	std::ranges::sort(times_ns);
	const QJsonObject line{{u"name"_s, QString::fromLatin1(name)},
			       {u"median_us"_s, static_cast<double>(times_ns[times_ns.size() / 2]) / 1000},
			       {u"p99_us"_s, static_cast<double>(times_ns[times_ns.size() * 99 / 100]) / 1000}};
	std::printf("%s\n", QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
	std::fflush(stdout);
}

/// A thread that does one thing whenever it is told to, as OBS's hotkey thread does.
class Presser {
public:
	explicit Presser(std::function<void()> press)
		: thread_([this, press = std::move(press)] {
			for (;;) {
				wanted_.acquire();
				if (over_)
					return;
				// The user interface is given the time to wait for events again.
				std::this_thread::sleep_for(std::chrono::milliseconds(2));
				pressed_ns_ = now_ns();
				press();
			}
		})
	{
	}
	~Presser()
	{
		over_ = true;
		wanted_.release();
		thread_.join();
	}
	Q_DISABLE_COPY_MOVE(Presser)

	/// Nanoseconds from the press until `happened`; this thread runs its event loop meanwhile.
	qint64 timeUntil(const std::function<bool()> &happened)
	{
		wanted_.release();
		while (!happened())
			QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
		return now_ns() - pressed_ns_;
	}

private:
	std::binary_semaphore wanted_{0};
	std::atomic<bool> over_{false};
	std::atomic<qint64> pressed_ns_{0};
	std::thread thread_;
};
} // namespace

/// The way of a key press to the saved replay and on to the helper, beside the least that each of them can take.
class PressToSave : public DockTest {
	Q_OBJECT

	static constexpr int presses = 1000;
	static constexpr int starts = 300;

	void press(const char *name)
	{
		const obs_hotkey_id hotkey = findHotkey("kestrune.clip_that")->id;
		// Without it libobs takes no presses but the keyboard's own.
		obs_hotkey_enable_callback_rerouting(true);
		QList<qint64> times_ns;
		Presser presser([hotkey] { obs_hotkey_trigger_routed_callback(hotkey, true); });
		for (int turn = 0; turn < presses; ++turn) {
			const int before = frontend().saveRequests;
			times_ns << presser.timeUntil([before] { return frontend().saveRequests > before; });
		}
		report(name, times_ns);
	}

	qint64 firstInstruction_ns() const
	{
		QFile file(scratchPath(u"first"_s));
		QByteArray line;
		while (!line.endsWith('\n')) {
			if (file.isOpen() || file.open(QIODevice::ReadOnly))
				line += file.readLine();
		}
		file.remove();
		return line.trimmed().toLongLong();
	}

	void startHelpers(const char *name)
	{
		qputenv("KESTRUNE_HELPER", FIRST_INSTRUCTION);
		qputenv("FIRST_INSTRUCTION_FILE", scratchPath(u"first"_s).toUtf8());
		frontend().lastReplay = "/replays/a.mkv";
		QList<qint64> times_ns;
		for (int turn = 0; turn < starts; ++turn) {
			QVERIFY(invoke("clipThat"));
			const qint64 saved_ns = now_ns();
			frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
			times_ns << firstInstruction_ns() - saved_ns;
			// The list of recent clips that follows is a run of the same program.
			QTRY_VERIFY_WITH_TIMEOUT(!isRunning(u"--process"_s) && !isRunning(u"--recent"_s), 10'000);
			firstInstruction_ns();
		}
		report(name, times_ns);
	}

private Q_SLOTS:
	void queuedCall()
	{
		QObject receiver;
		int calls = 0;
		QList<qint64> times_ns;
		Presser presser(
			[&] { QMetaObject::invokeMethod(&receiver, [&calls] { ++calls; }, Qt::QueuedConnection); });
		for (int turn = 0; turn < presses; ++turn)
			times_ns << presser.timeUntil([&calls, turn] { return calls > turn; });
		report("a queued call", times_ns);
	}

	void pressOnAnIdleDock()
	{
		QVERIFY(loadReady());
		press("key press to save");
	}

	void pressDuringAFlood()
	{
		helper().on(u"--recent"_s,
			    HelperScript().flood("{\"event\":\"recent\",\"folder\":\"/shorts\",\"items\":[]}\n"));
		QVERIFY(loadReady());
		QVERIFY(dock()->isVisible());
		QVERIFY(invoke("refreshRecent"));
		QTRY_VERIFY(hasStarted(u"--recent"_s));
		press("key press to save, during a flood");
	}

	void posixSpawn()
	{
		QByteArray program = FIRST_INSTRUCTION;
		qputenv("FIRST_INSTRUCTION_FILE", scratchPath(u"first"_s).toUtf8());
		QList<qint64> times_ns;
		for (int turn = 0; turn < starts; ++turn) {
			char *const arguments[]{program.data(), nullptr};
			pid_t child = 0;
			const qint64 begin_ns = now_ns();
			QCOMPARE(posix_spawn(&child, program.constData(), nullptr, nullptr, arguments, environ), 0);
			times_ns << firstInstruction_ns() - begin_ns;
			waitpid(child, nullptr, 0);
		}
		report("posix_spawn to first instruction", times_ns);
	}

	void helperStart()
	{
		QVERIFY(loadReady());
		startHelpers("saved replay to first instruction");
	}

	void cleanup()
	{
		DockTest::cleanup();
		qunsetenv("FIRST_INSTRUCTION_FILE");
	}
};

QTEST_MAIN(PressToSave)
#include "press_to_save.moc"
