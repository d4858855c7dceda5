#include <QPointer>
#include <QTimer>

#include "clip/account.hpp"
#include "clip/clip_texts.hpp"
#include "clip/replay_buffer.hpp"
#include "clip/replay_profile.hpp"
#include "dock/status_line.hpp"
#include "module/log.hpp"

#include <obs-frontend-api.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

ReplayBuffer::ReplayBuffer(StatusLine &status, const Account &account, std::function<void()> onChanged)
	: status_(status)
	, account_(account)
	, onChanged_(std::move(onChanged))
{
}

bool ReplayBuffer::isActive()
{
	return obs_frontend_replay_buffer_active();
}

bool ReplayBuffer::ensureReplayBuffer()
{
	if (isActive()) {
		return true;
	}

	config_t *profile = obs_frontend_get_profile_config();
	if (profile && enableReplayBuffer(profile)) {
		config_save_safe(profile, "tmp", nullptr);
		moduleLog(LOG_INFO, "enabled Replay Buffer (%d s) in the profile", minimumReplayTime_s);
	}

	const QPointer<ReplayBuffer> alive(this);
	obs_frontend_replay_buffer_start();
	if (alive) {
		// OBS starts it asynchronously, or not at all until the user confirms the settings.
		QTimer::singleShot(1500ms, this, &ReplayBuffer::reportStart);
	}
	return false;
}

void ReplayBuffer::reportStart()
{
	if (isActive()) {
		status_.setStatus(u"Replay Buffer on. Ready to clip."_s, false);
	} else {
		status_.setStatus(u"Replay Buffer is set up but OBS needs to apply it: "
				  "open Settings and click OK (or restart OBS once)."_s,
				  true);
	}
}

void ReplayBuffer::onStarted()
{
	onChanged_();
	status_.setStatus(account_.isLinked() ? pressClipThatText()
					      : u"Replay Buffer on. Connect your account to start clipping."_s,
			  false);
}

void ReplayBuffer::onStopped()
{
	status_.setStatus(u"Replay Buffer stopped. Start it (Controls → Start Replay Buffer) to clip."_s, true);
	onChanged_();
}
