#include <QJsonObject>
#include <QPointer>
#include <QTimer>

#include "chat/chat_texts.hpp"
#include "clip/account.hpp"
#include "clip/clip_button.hpp"
#include "clip/clip_flow.hpp"
#include "clip/clip_texts.hpp"
#include "clip/process_arguments.hpp"
#include "clip/replay_buffer.hpp"
#include "dock/status_line.hpp"
#include "helper/helper_runner.hpp"

#include <obs-frontend-api.h>
#include <util/util.hpp>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

ClipFlow::ClipFlow(ClipButton &button, HelperRunner &helper, StatusLine &status, Account &account,
		   ReplayBuffer &replayBuffer, Dock dock)
	: button_(button)
	, helper_(helper)
	, status_(status)
	, account_(account)
	, replayBuffer_(replayBuffer)
	, dock_(std::move(dock))
{
}

void ClipFlow::updateClipButton()
{
	const ClipReadiness readiness{.linked = account_.isLinked(),
				      .replayBufferActive = ReplayBuffer::isActive(),
				      .linking = account_.isLinking()};
	button_.showReadiness(readiness);

	// Only a stale "Ready" is replaced; an error or a progress message is news that the user still needs.
	if (readiness.linked && !readiness.replayBufferActive && jobsRunning_ == 0 &&
	    status_.text().startsWith(u"Ready")) {
		status_.setStatus(u"Replay Buffer is off. Starting it…"_s, false);
	}
}

void ClipFlow::clipThat()
{
	if (!account_.isLinked()) {
		account_.connectAccount();
		return;
	}
	if (!ReplayBuffer::isActive()) {
		const QPointer<ClipFlow> alive(this);
		replayBuffer_.ensureReplayBuffer();
		if (alive) {
			status_.setStatus(u"Starting the Replay Buffer… press Clip that again in a few seconds."_s,
					  false);
		}
		return;
	}

	// A second press while OBS still saves asks for another save: what OBS then reports as saved is what counts.
	clipPending_ = true;
	status_.setStatus(savingText(dock_.choices().length_s), false);
	obs_frontend_replay_buffer_save();
	watchSave();
}

void ClipFlow::clipFromChat(const QString &name)
{
	const QPointer<ClipFlow> alive(this);
	clipThat();
	if (alive) {
		// Also when there is no clip now: the streamer sees that somebody asked, and the button says what is
		// missing.
		status_.setStatus(clippedFromChatText(name), false);
	}
}

void ClipFlow::watchSave()
{
	awaitingSave_ = true;
	const quint64 generation = ++saveGeneration_;
	QTimer::singleShot(15s, this, [this, generation] { onSaveTimedOut(generation); });
}

void ClipFlow::onSaveTimedOut(quint64 generation)
{
	if (!awaitingSave_ || generation != saveGeneration_) {
		return;
	}
	// The clip stays pending: a save that comes late is still worth having.
	awaitingSave_ = false;
	status_.setStatus(u"OBS didn't save the replay within 15 s. "
			  "Check disk space and Settings → Output → Recording path."_s,
			  true);
}

void ClipFlow::onReplaySaved()
{
	awaitingSave_ = false;
	if (!clipPending_) {
		return; // saved by OBS's own controls
	}
	clipPending_ = false;

	BPtr<char> savedPath = obs_frontend_get_last_replay();
	if (!savedPath) {
		status_.setStatus(u"OBS didn't report the saved replay."_s, true);
		return;
	}
	makeShort(QString::fromUtf8(savedPath.Get()));
}

void ClipFlow::makeShort(const QString &replayPath)
{
	// With no helper the run never ends, and the count stays up: the failure that the user is told then must not be
	// replaced by news about the Replay Buffer.
	++jobsRunning_;
	status_.setStatus(u"Clip saved. Making your Short (about 1–3 min)…"_s, false);
	helper_.runHelper(
		processArguments(replayPath, dock_.choices()),
		[this](const QJsonObject &event) { onProcessEvent(event); },
		[this](int) {
			--jobsRunning_;
			dock_.refreshRecent();
		});
}

void ClipFlow::onProcessEvent(const QJsonObject &event)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"done") {
		status_.setStatus(shortReadyText(event), false);
	} else if (kind == u"pending") {
		status_.setStatus(u"Offline: clip kept and will upload automatically."_s, false);
	} else if (kind == u"error") {
		status_.setStatus(u"Clip kept locally: "_s + event[u"error"].toString(), true);
		if (event[u"relink"].toBool()) {
			dock_.refreshStatus();
		}
	}
}
