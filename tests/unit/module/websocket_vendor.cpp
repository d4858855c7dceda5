#include <QJsonObject>

#include "host/dock_test.hpp"
#include "host/fake_websocket.hpp"
#include "host/hotkeys.hpp"

namespace {
const LogLine registered{LOG_INFO, u"[kestrune] obs-websocket vendor \"Kestrune\" registered (ClipThat, GetStatus)"_s};
const LogLine notAvailable{LOG_INFO, u"[kestrune] obs-websocket not available; vendor requests disabled"_s};
const LogLine notFound{LOG_DEBUG, u"Unable to fetch obs-websocket proc handler object. obs-websocket not installed?"_s};
} // namespace

class WebsocketVendorTest : public DockTest {
	Q_OBJECT

	/// Calls the module's post-load function; returns what it logged.
	QList<LogLine> postLoad() const
	{
		const qsizetype before = obs().log().size();
		entryPoint<void()>("obs_module_post_load")();
		return obs().log().mid(before);
	}

private Q_SLOTS:
	void registersTheVendorAndItsRequests()
	{
		FakeWebsocket websocket;
		QVERIFY(load());
		QVERIFY(websocket.vendors.isEmpty());
		QCOMPARE(postLoad(), QList<LogLine>{registered});
		QCOMPARE(websocket.vendors, QStringList{u"Kestrune"_s});
		QCOMPARE(websocket.requests.size(), 2U);
		QVERIFY(websocket.requests.contains("ClipThat"));
		QVERIFY(websocket.requests.contains("GetStatus"));
		QCOMPARE(websocket.requests.at("ClipThat").privateData, nullptr);
		QCOMPARE(websocket.handlerQueries, 1);
	}

	void withoutObsWebsocketThereIsNoVendor()
	{
		QVERIFY(load());
		QCOMPARE(postLoad(), QList<LogLine>({notFound, notAvailable}));
	}

	void aRefusedVendorCountsAsNotAvailable()
	{
		FakeWebsocket websocket;
		websocket.refusesVendors = true;
		QVERIFY(load());
		QCOMPARE(postLoad(), QList<LogLine>{notAvailable});
		QVERIFY(websocket.requests.empty());
	}

	void refusedRequestsAreNotActedOn()
	{
		FakeWebsocket websocket;
		websocket.refusesRequests = true;
		QVERIFY(load());
		QCOMPARE(postLoad(), QList<LogLine>{registered});
	}

	void clipThatReachesTheDock()
	{
		FakeWebsocket websocket;
		QVERIFY(loadReady());
		postLoad();
		QCOMPARE(websocket.request("ClipThat"),
			 QJsonObject({{u"ok"_s, true}, {u"replay_buffer_active"_s, true}}));
		QCOMPARE(frontend().saveRequests, 0); // queued to the user-interface thread
		QTRY_COMPARE(frontend().saveRequests, 1);
		QVERIFY(statusIs(u"Saving the last 60 s…"_s, informationColour));
	}

	void clipThatWithoutTheReplayBufferIsHandedOnToo()
	{
		FakeWebsocket websocket;
		QVERIFY(loadReady());
		postLoad();
		frontend().replayBufferActive = false;
		QCOMPARE(websocket.request("ClipThat"),
			 QJsonObject({{u"ok"_s, true}, {u"replay_buffer_active"_s, false}}));
		QTRY_COMPARE(frontend().startRequests, 1);
		QCOMPARE(frontend().saveRequests, 0);
	}

	void statusNamesTheHotkeysBindings()
	{
		FakeWebsocket websocket;
		frontend().replayBufferActive = true;
		QVERIFY(load());
		postLoad();
		QJsonObject expected{{u"version"_s, u"" KESTRUNE_VERSION ""_s},
				     {u"dock"_s, true},
				     {u"replay_buffer_active"_s, true},
				     {u"hotkey"_s, u""_s}};
		QCOMPARE(websocket.request("GetStatus"), expected);

		const obs_hotkey_id id = findHotkey("kestrune.clip_that")->id;
		bindHotkey(id, {{INTERACT_CONTROL_KEY | INTERACT_SHIFT_KEY, OBS_KEY_C}});
		expected[u"hotkey"] = u"Ctrl+Shift+C"_s;
		QCOMPARE(websocket.request("GetStatus"), expected);

		bindHotkey(id,
			   {{INTERACT_CONTROL_KEY | INTERACT_SHIFT_KEY, OBS_KEY_C}, {INTERACT_ALT_KEY, OBS_KEY_F9}});
		expected[u"hotkey"] = u"Ctrl+Shift+C, Alt+F9"_s;
		frontend().replayBufferActive = false;
		expected[u"replay_buffer_active"] = false;
		QCOMPARE(websocket.request("GetStatus"), expected);
	}

	void requestsAfterTheDocksEndAreAnswered()
	{
		FakeWebsocket websocket;
		frontend().replayBufferActive = true;
		QVERIFY(load());
		postLoad();
		bindHotkey(findHotkey("kestrune.clip_that")->id, {{0, OBS_KEY_F9}});
		destroyMainWindow();
		QCOMPARE(websocket.request("ClipThat"),
			 QJsonObject({{u"ok"_s, false}, {u"replay_buffer_active"_s, true}}));
		QCOMPARE(websocket.request("GetStatus"), QJsonObject({{u"version"_s, u"" KESTRUNE_VERSION ""_s},
								      {u"dock"_s, false},
								      {u"replay_buffer_active"_s, true},
								      {u"hotkey"_s, u""_s}}));
	}
};

KESTRUNE_TEST(WebsocketVendorTest)
#include "websocket_vendor.moc"
