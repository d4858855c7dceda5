#include <QComboBox>
#include <QPushButton>

#include "host/dock_test.hpp"
#include "host/fake_websocket.hpp"
#include "host/hotkeys.hpp"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace {
/// Threads that call a function in a loop while this object lives.
class Hammer {
public:
	/// `strike` answers whether the module accepted the call.
	void start(std::function<bool()> strike)
	{
		threads_.emplace_back([this, strike = std::move(strike)] {
			while (!stopped_) {
				++(strike() ? taken_ : refused_);
				// Faster than any remote control, but slow enough for the dock: each clip request arms
				// a watchdog for 15 s.
				std::this_thread::sleep_for(2ms);
			}
		});
	}
	Hammer() = default;
	~Hammer()
	{
		stopped_ = true;
		for (std::thread &thread : threads_) {
			thread.join();
		}
	}
	Q_DISABLE_COPY_MOVE(Hammer)

	int taken() const { return taken_; }
	int refused() const { return refused_; }

private:
	std::atomic<bool> stopped_{false};
	std::atomic<int> taken_{0};
	std::atomic<int> refused_{0};
	std::vector<std::thread> threads_{};
};
} // namespace

/// Hotkey presses and requests from other threads, whatever dock and module are doing.
class DockAccessTest : public DockTest {
	Q_OBJECT

	void startHammering(Hammer &hammer, const FakeWebsocket &websocket) const
	{
		for (const char *type : {"ClipThat", "GetStatus"}) {
			const FakeWebsocket::Callback callback = websocket.requests.at(type);
			hammer.start([callback] {
				const OBSDataAutoRelease response = obs_data_create();
				callback.function(nullptr, response, callback.privateData);
				return obs_data_get_bool(response, "ok") || obs_data_get_bool(response, "dock");
			});
		}
		const obs_hotkey_id id = findHotkey("kestrune.clip_that")->id;
		hammer.start([id, pressed = false]() mutable {
			pressed = !pressed;
			obs_hotkey_trigger_routed_callback(id, pressed);
			return true;
		});
	}

	void useTheDock()
	{
		choose(u"style"_s, u"meme"_s);
		choose(u"seconds"_s, 90);
		for (const char *slot : {"startHotkeyCapture", "refreshHotkeyUi", "refreshRecent", "refreshPreview"}) {
			QVERIFY(invoke(slot));
		}
		bindHotkey(findHotkey("kestrune.clip_that")->id,
			   {{INTERACT_CONTROL_KEY, OBS_KEY_C}, {INTERACT_ALT_KEY, OBS_KEY_F9}});
		const OBSDataAutoRelease saveData = obs_data_create();
		frontend().saveOrLoad(saveData, true);
		frontend().saveOrLoad(saveData, false);
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		frontend().emitEvent(OBS_FRONTEND_EVENT_FINISHED_LOADING);
		QTest::qWait(20);
	}

private Q_SLOTS:
	void mayCallAtAnyMoment_data()
	{
		QTest::addColumn<bool>("dockGoesFirst");
#ifdef Q_OS_WINDOWS
		constexpr int cycles = 2; // Wine needs 5 s for each
#else
		constexpr int cycles = 5;
#endif
		for (int cycle = 0; cycle < cycles; ++cycle) {
			QTest::addRow("OBS ends, %d", cycle) << true;
			QTest::addRow("the module is unloaded with its dock there, %d", cycle) << false;
		}
	}
	void mayCallAtAnyMoment()
	{
		QFETCH(bool, dockGoesFirst);
		const FakeWebsocket websocket;
		frontend().lastReplay = "/videos/replay.mkv";
		QVERIFY(loadReady());
		entryPoint<void()>("obs_module_post_load")();
		obs_hotkey_enable_callback_rerouting(true);

		Hammer hammer;
		startHammering(hammer, websocket);
		for (int round = 0; round < 5; ++round) {
			useTheDock();
		}
		QTRY_VERIFY(frontend().saveRequests > 0);
		QVERIFY(hammer.taken() > 0);

		if (dockGoesFirst) {
			destroyMainWindow();
		}
		entryPoint<void()>("obs_module_unload")();
		const int refusedBefore = hammer.refused();
		QTRY_VERIFY(hammer.refused() > refusedBefore);

		if (!dockGoesFirst) {
			// Make a new dock, without an account, while requests come in.
			QVERIFY(entryPoint<bool()>("obs_module_load")());
			QTRY_VERIFY(helper().count(u"--link"_s) > 0);
			entryPoint<void()>("obs_module_unload")();
		}
	}
};

KESTRUNE_TEST(DockAccessTest)
#include "dock_access.moc"
