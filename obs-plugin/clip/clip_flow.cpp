#include <QJsonObject>
#include <QPointer>
#include <QTimer>

#include "clip/account.hpp"
#include "clip/clip_button.hpp"
#include "clip/clip_flow.hpp"
#include "clip/clip_texts.hpp"
#include "clip/process_arguments.hpp"
#include "clip/replay_buffer.hpp"
#include "dock/choices_section.hpp"
#include "dock/recent_section.hpp"
#include "dock/status_line.hpp"
#include "helper/helper_runner.hpp"

#include <obs-frontend-api.h>
#include <util/util.hpp>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

ClipFlow::ClipFlow(HelperRunner &helper, const Parts &parts, std::function<void()> refreshStatus)
	: helper_(helper)
	, parts_(parts)
	, refreshStatus_(std::move(refreshStatus))
{
}

void ClipFlow::updateClipButton()
{
	const ClipReadiness readiness{.linked = parts_.account.isLinked(),
				      .replayBufferActive = ReplayBuffer::isActive(),
				      .linking = parts_.account.isLinking()};
	parts_.button.showReadiness(readiness);

	// Replace only a stale "Ready"; the user still needs errors and progress.
	if (readiness.linked && !readiness.replayBufferActive && jobsRunning_ == 0 &&
	    parts_.status.text().startsWith(u"Ready")) {
		parts_.status.setStatus(u"Replay Buffer is off. Starting it…"_s, false);
	}
}

void ClipFlow::clipThat()
{
	if (!parts_.account.isLinked()) {
		parts_.account.connectAccount();
		return;
	}
	if (!ReplayBuffer::isActive()) {
		const QPointer<ClipFlow> alive(this);
		parts_.replayBuffer.ensureReplayBuffer();
		if (alive) {
			parts_.status.setStatus(
				u"Starting the Replay Buffer… press Clip that again in a few seconds."_s, false);
		}
		return;
	}

	// A second press requests another save; whatever OBS reports as saved counts.
	clipPending_ = true;
	parts_.status.setStatus(savingText(parts_.choices.lengthText()), false);
	obs_frontend_replay_buffer_save();
	watchSave();
}

void ClipFlow::clipFromChat(const QString &name)
{
	const QPointer<ClipFlow> alive(this);
	clipThat();
	if (alive) {
		// Even if no clip was possible: the streamer should see who asked, and the button says what is missing.
		parts_.status.setStatus(clippedFromChatText(name), false);
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
	// The clip stays pending: a late save is still worth having.
	awaitingSave_ = false;
	parts_.status.setStatus(u"OBS didn't save the replay within 15 s. "
				"Check disk space and Settings → Output → Recording path."_s,
				true);
}

void ClipFlow::onReplaySaved()
{
	awaitingSave_ = false;
	if (!clipPending_) {
		return; // saved with OBS's own controls
	}
	clipPending_ = false;

	BPtr<char> savedPath = obs_frontend_get_last_replay();
	if (!savedPath) {
		parts_.status.setStatus(u"OBS didn't report the saved replay."_s, true);
		return;
	}
	makeShort(QString::fromUtf8(savedPath.Get()));
}

void ClipFlow::makeShort(const QString &replayPath)
{
	// If the helper is missing or does not start, the run never ends and the count stays up. The only effect is
	// that a later "Ready" is not replaced while the Replay Buffer is off.
	++jobsRunning_;
	parts_.status.setStatus(u"Clip saved. Making your Short (about 1–3 min)…"_s, false);
	helper_.runHelper(
		processArguments(replayPath, parts_.choices.choices()),
		[this](const QJsonObject &event) { onProcessEvent(event); },
		[this](int) {
			--jobsRunning_;
			parts_.recent.refreshRecent();
		});
}

void ClipFlow::onProcessEvent(const QJsonObject &event)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"done") {
		parts_.status.setStatus(shortReadyText(event), false);
	} else if (kind == u"pending") {
		parts_.status.setStatus(u"Offline: clip kept and will upload automatically."_s, false);
	} else if (kind == u"error") {
		parts_.status.setStatus(u"Clip kept locally: "_s + event[u"error"].toString(), true);
		if (event[u"relink"].toBool()) {
			refreshStatus_();
		}
	}
}
