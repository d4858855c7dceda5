#include <QJsonDocument>
#include <QLabel>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"

#include <obs-hotkey.h>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

/// Stands in for OBS's hotkey thread: does one thing whenever told.
class Presser {
public:
	explicit Presser(std::function<void()> press)
		: thread_([this, press = std::move(press)] {
			for (;;) {
				wanted_.acquire();
				if (over_) {
					return;
				}
				// Let the user-interface thread go back to waiting for events.
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

	/// Nanoseconds from the press until `happened` is called, while this thread runs its event loop.
	qint64 time_ns()
	{
		happened_ns_ = 0;
		wanted_.release();
		while (happened_ns_ == 0) {
			QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
		}
		return happened_ns_ - pressed_ns_;
	}

	/// Call it when the press takes effect, on the thread that runs `time_ns`.
	void happened()
	{
		if (happened_ns_ == 0) {
			happened_ns_ = now_ns();
		}
	}

private:
	std::binary_semaphore wanted_{0};
	std::atomic<bool> over_{false};
	std::atomic<qint64> pressed_ns_{0};
	qint64 happened_ns_{0};
	std::thread thread_;
};
} // namespace

/// From a key press to the save request and to the helper, each beside the least time it can take.
class PressToSave : public DockTest {
	Q_OBJECT

	static constexpr int presses = 1000;
	static constexpr int starts = 300;
	static constexpr int pause_ms = 20;

	void press(const char *name)
	{
		const obs_hotkey_id hotkey = findHotkey("kestrune.clip_that")->id;
		// Otherwise libobs only accepts presses of the real keyboard.
		obs_hotkey_enable_callback_rerouting(true);
		QList<qint64> times_ns;
		Presser presser([hotkey] { obs_hotkey_trigger_routed_callback(hotkey, true); });
		frontend().onSaveRequest = [&presser] { presser.happened(); };
		for (int turn = 0; turn < presses; ++turn) {
			times_ns << presser.time_ns();
		}
		frontend().onSaveRequest = {};
		report(name, times_ns);
	}

	/// A named pipe: waiting for it takes no CPU time from the program.
	int pipe_{-1};

	void openPipe()
	{
		const QByteArray path = scratchPath(u"first"_s).toUtf8();
		QCOMPARE(mkfifo(path.constData(), 0600), 0);
		qputenv("FIRST_INSTRUCTION_FILE", path);
		// Also open for writing: otherwise the pipe ends with its first writer.
		pipe_ = open(path.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
		QVERIFY(pipe_ >= 0);
	}

	/// The pipe's content: one line per start.
	QByteArray noted() const
	{
		QByteArray lines(4096, Qt::Uninitialized);
		const ssize_t size = read(pipe_, lines.data(), static_cast<size_t>(lines.size()));
		return lines.first(std::max<ssize_t>(size, 0));
	}

	qint64 firstInstruction_ns() const
	{
		pollfd waiting{pipe_, POLLIN, 0};
		poll(&waiting, 1, -1);
		const QByteArray lines = noted();
		return lines.first(lines.indexOf('\n')).toLongLong();
	}

	qint64 bareStart_ns() const
	{
		QByteArray program = FIRST_INSTRUCTION;
		char *const arguments[]{program.data(), nullptr};
		pid_t child = 0;
		const qint64 begin_ns = now_ns();
		if (posix_spawn(&child, program.constData(), nullptr, nullptr, arguments, environ) != 0) {
			return -1;
		}
		const qint64 time_ns = firstInstruction_ns() - begin_ns;
		waitpid(child, nullptr, 0);
		return time_ns;
	}

	qint64 helperStart_ns() const
	{
		const qint64 saved_ns = now_ns();
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		return firstInstruction_ns() - saved_ns;
	}

	/// A busy CPU starts programs faster, so pause before each start.
	void pause() const
	{
		QTest::qWait(pause_ms);
		noted();
	}

private Q_SLOTS:
	void queuedCall()
	{
		QObject receiver;
		Presser *waiting = nullptr;
		QList<qint64> times_ns;
		Presser presser([&] {
			QMetaObject::invokeMethod(&receiver, [&waiting] { waiting->happened(); }, Qt::QueuedConnection);
		});
		waiting = &presser;
		for (int turn = 0; turn < presses; ++turn) {
			times_ns << presser.time_ns();
		}
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

	/// Alternates, so that both see the machine in the same state.
	void helperStart()
	{
		QVERIFY(loadReady());
		qputenv("KESTRUNE_HELPER", FIRST_INSTRUCTION);
		openPipe();
		frontend().lastReplay = "/replays/a.mkv";
		QList<qint64> bare_ns;
		QList<qint64> ours_ns;
		for (int turn = 0; turn < starts; ++turn) {
			pause();
			bare_ns << bareStart_ns();
			QVERIFY(bare_ns.last() > 0);

			QVERIFY(invoke("clipThat"));
			pause();
			ours_ns << helperStart_ns();
			// The query for recent clips that follows runs the same program.
			QTRY_VERIFY(!isRunning(u"--process"_s) && !isRunning(u"--recent"_s));
		}
		report("posix_spawn to first instruction", bare_ns);
		report("saved replay to first instruction", ours_ns);
	}

	void cleanup()
	{
		if (pipe_ >= 0) {
			close(std::exchange(pipe_, -1));
		}
		DockTest::cleanup();
		qunsetenv("FIRST_INSTRUCTION_FILE");
	}
};

KESTRUNE_TEST(PressToSave)
#include "press_to_save.moc"
