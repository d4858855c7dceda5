#include <QJsonDocument>

#include "dock/kestrune_dock.hpp"
#include "dock_host.hpp"
#include "fake_frontend/fake_frontend.hpp"
#include "host/fake_websocket.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"
#include "module/websocket_vendor.hpp"

using namespace Qt::StringLiterals;

// Each line of an input begins with a letter: "C" and "G" send ClipThat and GetStatus, "B" loads the clip hotkey's
// bindings from OBS's save data; the rest of the line is the request's or the save data. "r" starts or stops the Replay
// Buffer, "d" gives the module its dock or takes it away; there is none at first. That the dock may end meanwhile is
// for tests/unit/module/dock_access.cpp.

namespace {
// Many lines that are each quick must not be taken for a hang.
constexpr int maxInput_lines = 40;

FakeWebsocket &websocket()
{
	static FakeWebsocket instance;
	return instance;
}

void requireAnswers(const OBSDataAutoRelease &request, bool dock)
{
	const bool replayBuffer = frontend().replayBufferActive;
	const QJsonObject clip = websocket().request("ClipThat", request);
	require(clip == QJsonObject({{u"ok"_s, dock}, {u"replay_buffer_active"_s, replayBuffer}}),
		"ClipThat answers by the module's state alone");

	const QJsonObject status = websocket().request("GetStatus", request);
	require(status == QJsonObject({{u"version"_s, u"" KESTRUNE_VERSION ""_s},
				       {u"dock"_s, dock},
				       {u"replay_buffer_active"_s, replayBuffer},
				       {u"hotkey"_s, dock ? currentHotkeyText() : QString()}}),
		"GetStatus answers by the module's state alone");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHost();
	static const bool registered = [] {
		websocket();
		registerWebsocketVendor();
		return websocket().requests.size() == 2;
	}();
	require(registered, "both requests are registered");

	const FuzzDock &dock = FuzzDock::fresh(false);
	setCurrentDock(nullptr);
	frontend().replayBufferActive = false;
	QByteArray rest = toBytes(data, size);
	for (int count = 0; count < maxInput_lines && !rest.isEmpty(); ++count) {
		const QByteArray line = takeLine(rest);
		const char letter = line.isEmpty() ? '\0' : line[0];
		const OBSDataAutoRelease json = obs_data_create_from_json(line.mid(1).constData());
		if (letter == 'B' && json) {
			saveOrLoadClipHotkey(json, false, nullptr);
		} else if (letter == 'r') {
			frontend().replayBufferActive = !frontend().replayBufferActive;
		} else if (letter == 'd') {
			setCurrentDock(dockExists() ? nullptr : dock.operator->());
		} else if (letter == 'C' || letter == 'G') {
			requireAnswers(json, dockExists());
		}
		FuzzDock::settle();
	}
	lookForLeaks();
	return 0;
}
