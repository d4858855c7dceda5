#include <QComboBox>
#include <QTimer>

#include "clip/clip_command.hpp"
#include "dock/choice_tables.hpp"
#include "dock/kestrune_dock.hpp"

#include <obs-frontend-api.h>
#include <util/util.hpp>

#include <chrono>

using namespace std::chrono_literals;

// One clip, in the order it happens: asked for, saved by OBS, made into a Short by the helper.

void KestruneDock::clipThat()
{
	if (!linked_) {
		connectAccount();
		return;
	}
	if (!obs_frontend_replay_buffer_active()) {
		ensureReplayBuffer();
		setStatus(QStringLiteral("Starting the Replay Buffer… press Clip that again in a few seconds."), false);
		return;
	}

	clipPending_ = true;
	setStatus(savingText(secondsBox_->currentText()), false);
	obs_frontend_replay_buffer_save();
	watchSave();
}

void KestruneDock::watchSave()
{
	awaitingSave_ = true;
	const quint64 generation = ++saveGeneration_;
	QTimer::singleShot(15s, this, [this, generation] {
		if (!awaitingSave_ || generation != saveGeneration_)
			return;
		// The clip stays pending: a save that comes late is still worth having.
		awaitingSave_ = false;
		setStatus(QStringLiteral("OBS didn't save the replay within 15 s. "
					 "Check disk space and Settings → Output → Recording path."),
			  true);
	});
}

void KestruneDock::onReplaySaved()
{
	awaitingSave_ = false;
	if (!clipPending_)
		return; // saved by OBS's own controls
	clipPending_ = false;

	BPtr<char> savedPath = obs_frontend_get_last_replay();
	if (!savedPath) {
		setStatus(QStringLiteral("OBS didn't report the saved replay."), true);
		return;
	}

	const ClipChoices choices{secondsBox_->currentData().toInt(), currentKey(layoutBox_), currentKey(styleBox_),
				  currentKey(fontBox_), currentKey(positionBox_)};
	++clipJobsRunning_;
	setStatus(QStringLiteral("Clip saved. Making your Short (about 1–3 min)…"), false);
	runHelper(
		processArguments(QString::fromUtf8(savedPath.Get()), choices),
		[this](const QJsonObject &event) { onClipEvent(event); }, [this](int) { onClipJobFinished(); });
}

void KestruneDock::onClipEvent(const QJsonObject &event)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"done") {
		setStatus(readyText(event), false);
	} else if (kind == u"pending") {
		setStatus(QStringLiteral("Offline: clip kept and will upload automatically."), false);
	} else if (kind == u"error") {
		setStatus(QStringLiteral("Clip kept locally: ") + event[u"error"].toString(), true);
		if (event[u"relink"].toBool())
			refreshStatus();
	}
}

void KestruneDock::onClipJobFinished()
{
	--clipJobsRunning_;
	refreshRecent();
}
