#include <QString>

#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"
#include "module/log.hpp"
#include "module/websocket_vendor.hpp"

#include <callback/calldata.h>
#include <callback/proc.h>
#include <obs-frontend-api.h>
#include <obs.h>

#include <memory>

// obs-websocket is called through libobs's procedure handlers, so nothing links to it. Its requests come in on its own
// threads and may outlive the dock.

namespace {
using RequestFunction = void (*)(obs_data_t *request, obs_data_t *response, void *privateData);

/// The layout that obs-websocket expects.
struct RequestCallback {
	RequestFunction function{nullptr};
	void *privateData{nullptr};
};

void answerClipThat(obs_data_t *, obs_data_t *response, void *)
{
	obs_data_set_bool(response, "ok", invokeDockSlot("clipThat"));
	obs_data_set_bool(response, "replay_buffer_active", obs_frontend_replay_buffer_active());
}

void answerGetStatus(obs_data_t *, obs_data_t *response, void *)
{
	const bool hasDock = dockExists();
	const QString hotkey = hasDock ? currentHotkeyText() : QString();
	obs_data_set_string(response, "version", KESTRUNE_VERSION);
	obs_data_set_bool(response, "dock", hasDock);
	obs_data_set_bool(response, "replay_buffer_active", obs_frontend_replay_buffer_active());
	obs_data_set_string(response, "hotkey", hotkey.toUtf8().constData());
}

RequestCallback clipThatCallback{answerClipThat, nullptr};
RequestCallback getStatusCallback{answerGetStatus, nullptr};

using Calldata = std::unique_ptr<calldata_t, decltype(&calldata_destroy)>;

Calldata newCalldata()
{
	return {calldata_create(), calldata_destroy};
}

/// Null without obs-websocket.
proc_handler_t *findWebsocketHandler()
{
	const Calldata call = newCalldata();
	if (!proc_handler_call(obs_get_proc_handler(), "obs_websocket_api_get_ph", call.get())) {
		blog(LOG_DEBUG, "Unable to fetch obs-websocket proc handler object. obs-websocket not installed?");
	}
	return static_cast<proc_handler_t *>(calldata_ptr(call.get(), "ph"));
}

/// Null if obs-websocket refuses the vendor.
void *registerVendor(proc_handler_t *websocket)
{
	const Calldata call = newCalldata();
	calldata_set_string(call.get(), "name", "Kestrune");
	proc_handler_call(websocket, "vendor_register", call.get());
	return calldata_ptr(call.get(), "vendor");
}

void registerRequest(proc_handler_t *websocket, void *vendor, const char *type, RequestCallback *callback)
{
	const Calldata call = newCalldata();
	calldata_set_string(call.get(), "type", type);
	calldata_set_ptr(call.get(), "callback", callback);
	calldata_set_ptr(call.get(), "vendor", vendor);
	proc_handler_call(websocket, "vendor_request_register", call.get());
}
} // namespace

void registerWebsocketVendor()
{
	proc_handler_t *websocket = findWebsocketHandler();
	void *vendor = websocket ? registerVendor(websocket) : nullptr;
	if (!vendor) {
		moduleLog(LOG_INFO, "obs-websocket not available; vendor requests disabled");
		return;
	}

	registerRequest(websocket, vendor, "ClipThat", &clipThatCallback);
	registerRequest(websocket, vendor, "GetStatus", &getStatusCallback);
	moduleLog(LOG_INFO, "obs-websocket vendor \"Kestrune\" registered (ClipThat, GetStatus)");
}
