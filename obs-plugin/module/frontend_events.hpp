#pragma once

#include <obs-frontend-api.h>

/// Hands OBS frontend events to the dock: Replay Buffer saved, started, stopped, and finished loading. Registered with
/// obs_frontend_add_event_callback; called by OBS on the user-interface thread.
void onFrontendEvent(enum obs_frontend_event event, void *privateData);
