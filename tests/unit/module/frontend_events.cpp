#include <QDeadlineTimer>
#include <QLabel>
#include <QProcess>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"

#include <obs.hpp>

#include <atomic>
#include <stop_token>
#include <thread>

/// OBS's events and hotkey reach the dock, and nothing does after its end.
class FrontendEventsTest : public DockTest {
	Q_OBJECT

	void emitAll(bool withKnown) const
	{
		for (int event = OBS_FRONTEND_EVENT_STREAMING_STARTING; event < 100; ++event) {
			const bool known = event == OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED ||
					   event == OBS_FRONTEND_EVENT_REPLAY_BUFFER_STARTED ||
					   event == OBS_FRONTEND_EVENT_REPLAY_BUFFER_STOPPED ||
					   event == OBS_FRONTEND_EVENT_FINISHED_LOADING;
			if (withKnown || !known) {
				frontend().emitEvent(static_cast<obs_frontend_event>(event));
			}
		}
	}

	qsizetype runsInFlight() const { return dock()->findChildren<QProcess *>().size(); }

private Q_SLOTS:
	void finishedLoadingAsksForTheStatusOnceAndLater()
	{
		QVERIFY(load());
		frontend().emitEvent(OBS_FRONTEND_EVENT_FINISHED_LOADING);
		QCOMPARE(runsInFlight(), 0);
		QCoreApplication::sendPostedEvents();
		QCOMPARE(runsInFlight(), 1);
		QTRY_COMPARE(helper().runs(), QList<QStringList>({{u"--status"_s}}));
	}

	void otherEventsChangeNothing()
	{
		QVERIFY(load());
		emitAll(false);
		QCoreApplication::sendPostedEvents();
		QCOMPARE(runsInFlight(), 0);
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
		QCOMPARE(frontend().lastReplayQueries + frontend().startRequests + frontend().saveRequests, 0);
	}

	void hotkeyPressClipsOnTheDocksThread()
	{
		QVERIFY(loadReady());
		pressHotkey("kestrune.clip_that", true);
		QCOMPARE(frontend().saveRequests, 0);
		QCoreApplication::sendPostedEvents();
		QCOMPARE(frontend().saveRequests, 1);
	}

	void boundCombinationClips()
	{
		QVERIFY(loadReady());
		bindHotkey(findHotkey("kestrune.clip_that")->id, {{INTERACT_ALT_KEY, OBS_KEY_F9}});
		std::thread([] { obs_hotkey_inject_event({INTERACT_ALT_KEY, OBS_KEY_F9}, true); }).join();
		QTRY_COMPARE(frontend().saveRequests, 1);
	}

	void hotkeyReleaseDoesNothing()
	{
		QVERIFY(loadReady());
		pressHotkey("kestrune.clip_that", false);
		QCoreApplication::sendPostedEvents();
		QCOMPARE(frontend().saveRequests, 0);
	}

	void nothingReachesADestroyedDock_data()
	{
		QTest::addColumn<bool>("withItsWindow");
		QTest::newRow("the main window goes") << true;
		QTest::newRow("the dock alone goes") << false;
	}
	void nothingReachesADestroyedDock()
	{
		QFETCH(bool, withItsWindow);
		QVERIFY(loadReady());
		frontend().lastReplay = "/replay.mkv";
		invoke("clipThat");
		if (withItsWindow) {
			destroyMainWindow();
		} else {
			delete dock();
		}
		QVERIFY(!dock());

		const qsizetype runs = helper().runs().size();
		emitAll(true);
		pressHotkey("kestrune.clip_that", true);
		const OBSDataAutoRelease saveData = obs_data_create();
		frontend().saveOrLoad(saveData, true);
		frontend().saveOrLoad(saveData, false);
		QTest::qWait(100);

		QCOMPARE(frontend().saveRequests, 1);
		QCOMPARE(frontend().lastReplayQueries, 0);
		QCOMPARE(helper().runs().size(), runs);
	}

	void destroyedDockStillLoadsBindingsFromObs()
	{
		QVERIFY(load());
		destroyMainWindow();
		const OBSDataAutoRelease saveData =
			obs_data_create_from_json(R"({"kestrune_hotkey": [{"alt": true, "key": "OBS_KEY_F5"}]})");
		frontend().saveOrLoad(saveData, false);
		QCOMPARE(boundCombinations(findHotkey("kestrune.clip_that")->id), QStringList{u"8 OBS_KEY_F5"_s});
	}

	void callsQueuedForADestroyedDockAreDropped()
	{
		QVERIFY(loadReady());
		pressHotkey("kestrune.clip_that", true);
		destroyMainWindow();
		QCoreApplication::sendPostedEvents();
		QCOMPARE(frontend().saveRequests, 0);
	}

	void pressesWhileTheDockIsDestroyedAreHarmless()
	{
		QVERIFY(loadReady());
		const obs_hotkey_id id = findHotkey("kestrune.clip_that")->id;
		obs_hotkey_enable_callback_rerouting(true);
		std::atomic<int> presses{0};
		{
			const std::jthread hotkeyThread([&](const std::stop_token &end) {
				while (!end.stop_requested()) {
					obs_hotkey_trigger_routed_callback(id, true);
					++presses;
				}
			});
			// Not in an event loop: it would never catch up with the presses, which would fill the memory.
			const auto waitForPresses = [&presses](int count) {
				const QDeadlineTimer deadline(patience_ms);
				while (presses < count && !deadline.hasExpired()) {
					std::this_thread::yield();
				}
				return presses >= count;
			};
			QVERIFY(waitForPresses(100));
			destroyMainWindow();
			QVERIFY(waitForPresses(presses + 100));
		}
		QVERIFY(!dock());
		QCoreApplication::sendPostedEvents();
		QCOMPARE(frontend().saveRequests, 0);
	}
};

KESTRUNE_TEST(FrontendEventsTest)
#include "frontend_events.moc"
