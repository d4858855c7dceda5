#include "dock/kestrune_dock.hpp"
#include "helper/helper_locator.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"
#include "module/frontend_events.hpp"
#include "module/log.hpp"
#include "module/websocket_vendor.hpp"

#include <obs-frontend-api.h>
#include <obs-module.h>
#include <util/text-lookup.h>

// The entry points, all called on the user-interface thread. OBS_DECLARE_MODULE() would report the OBS version that the
// module is built with; these report the oldest that it runs on.

namespace {
constexpr uint32_t oldestApiVersion = MAKE_SEMANTIC_VERSION(31, 1, 1);
static_assert(LIBOBS_API_VER >= oldestApiVersion, "Kestrune needs the headers of OBS Studio 31.1.1 or newer");
} // namespace

OBS_MODULE_USE_DEFAULT_LOCALE("kestrune", "en-US")

MODULE_EXPORT uint32_t obs_module_ver()
{
	return oldestApiVersion;
}

MODULE_EXPORT const char *obs_module_name()
{
	return "Kestrune";
}

MODULE_EXPORT const char *obs_module_description()
{
	return "Kestrune: press a hotkey, get a captioned vertical Short of the last 30-120 seconds.";
}

MODULE_EXPORT bool obs_module_load()
{
	registerClipHotkey();

	// OBS gets the dock empty: it reparents a new dock twice, and each time Qt restyles everything in it, which
	// would take longer than all the rest.
	bool added = false;
	auto *dock = new KestruneDock(static_cast<QWidget *>(obs_frontend_get_main_window()), [&added](QWidget *empty) {
		added = obs_frontend_add_dock_by_id("kestrune", "Kestrune", empty);
		return added;
	});
	if (!added) {
		// The hotkey stays registered but does nothing without a dock.
		moduleLog(LOG_WARNING, "could not add the Kestrune dock");
		delete dock;
		return false;
	}
	setCurrentDock(dock);

	obs_frontend_add_event_callback(onFrontendEvent, nullptr);
	obs_frontend_add_save_callback(saveOrLoadClipHotkey, nullptr);
	moduleLog(LOG_INFO, "Kestrune loaded (version %s), helper: %s", KESTRUNE_VERSION,
		  locateHelper().toUtf8().constData());
	return true;
}

MODULE_EXPORT void obs_module_post_load()
{
	registerWebsocketVendor();
}

MODULE_EXPORT void obs_module_unload()
{
	obs_frontend_remove_event_callback(onFrontendEvent, nullptr);
	obs_frontend_remove_save_callback(saveOrLoadClipHotkey, nullptr);
	unregisterClipHotkey();
	setCurrentDock(nullptr);
}
