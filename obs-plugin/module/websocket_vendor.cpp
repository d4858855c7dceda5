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

proc_handler_t *websocketHandler = nullptr;
void *vendor = nullptr;

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

bool findWebsocketHandler()
{
	if (websocketHandler) {
		return true;
	}

	const Calldata call = newCalldata();
	if (!proc_handler_call(obs_get_proc_handler(), "obs_websocket_api_get_ph", call.get())) {
		blog(LOG_DEBUG, "Unable to fetch obs-websocket proc handler object. obs-websocket not installed?");
	}
	websocketHandler = static_cast<proc_handler_t *>(calldata_ptr(call.get(), "ph"));
	return websocketHandler != nullptr;
}

void registerRequest(const char *type, RequestCallback *callback)
{
	const Calldata call = newCalldata();
	calldata_set_string(call.get(), "type", type);
	calldata_set_ptr(call.get(), "callback", callback);
	calldata_set_ptr(call.get(), "vendor", vendor);
	proc_handler_call(websocketHandler, "vendor_request_register", call.get());
}

void registerVendor()
{
	if (!findWebsocketHandler()) {
		return;
	}

	const Calldata call = newCalldata();
	calldata_set_string(call.get(), "name", "Kestrune");
	proc_handler_call(websocketHandler, "vendor_register", call.get());
	vendor = calldata_ptr(call.get(), "vendor");
}
} // namespace

void registerWebsocketVendor()
{
	registerVendor();
	if (!vendor) {
		moduleLog(LOG_INFO, "obs-websocket not available; vendor requests disabled");
		return;
	}

	registerRequest("ClipThat", &clipThatCallback);
	registerRequest("GetStatus", &getStatusCallback);
	moduleLog(LOG_INFO, "obs-websocket vendor \"Kestrune\" registered (ClipThat, GetStatus)");
}

void forgetWebsocketVendor()
{
	vendor = nullptr;
	websocketHandler = nullptr;
}
