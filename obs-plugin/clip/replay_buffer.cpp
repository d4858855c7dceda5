#include <QTimer>

#include "clip/replay_profile.hpp"
#include "dock/kestrune_dock.hpp"
#include "module/log.hpp"

#include <obs-frontend-api.h>

#include <chrono>

using namespace std::chrono_literals;

bool KestruneDock::ensureReplayBuffer()
{
	if (obs_frontend_replay_buffer_active())
		return true;

	config_t *profile = obs_frontend_get_profile_config();
	if (profile && enableReplayBuffer(profile)) {
		config_save_safe(profile, "tmp", nullptr);
		moduleLog(LOG_INFO, "enabled Replay Buffer (%d s) in the profile", minimumReplayTime_s);
	}
	obs_frontend_replay_buffer_start();

	// OBS starts it in its own time, or not at all until its settings are confirmed: only a later look tells.
	QTimer::singleShot(1500ms, this, [this] {
		if (obs_frontend_replay_buffer_active())
			setStatus(QStringLiteral("Replay Buffer on. Ready to clip."), false);
		else
			setStatus(QStringLiteral("Replay Buffer is set up but OBS needs to apply it: "
						 "open Settings and click OK (or restart OBS once)."),
				  true);
	});
	return false;
}

void KestruneDock::onReplayBufferStarted()
{
	updateClipButton();
	setStatus(linked_ ? QStringLiteral("Ready. Press Clip that or your Kestrune hotkey.")
			  : QStringLiteral("Replay Buffer on. Connect your account to start clipping."),
		  false);
}

void KestruneDock::onReplayBufferStopped()
{
	setStatus(QStringLiteral("Replay Buffer stopped. Start it (Controls → Start Replay Buffer) to clip."), true);
	updateClipButton();
}
