#include "dock/kestrune_dock.hpp"
#include "module/dock_access.hpp"
#include "module/frontend_events.hpp"

void onFrontendEvent(enum obs_frontend_event event, void *)
{
	auto *dock = qobject_cast<KestruneDock *>(currentDock());
	if (!dock) {
		return;
	}

	switch (event) {
	case OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED:
		dock->onReplaySaved();
		break;
	case OBS_FRONTEND_EVENT_REPLAY_BUFFER_STARTED:
		dock->onReplayBufferStarted();
		break;
	case OBS_FRONTEND_EVENT_REPLAY_BUFFER_STOPPED:
		dock->onReplayBufferStopped();
		break;
	case OBS_FRONTEND_EVENT_FINISHED_LOADING:
		// OBS is still starting up: run the helper afterwards.
		invokeDockSlot("refreshStatus");
		break;
	default:
		break;
	}
}
