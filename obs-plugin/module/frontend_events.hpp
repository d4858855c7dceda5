#pragma once

#include <obs-frontend-api.h>

/// Passes OBS's frontend events to the dock. OBS calls it on the user-interface thread.
void onFrontendEvent(enum obs_frontend_event event, void *privateData);
