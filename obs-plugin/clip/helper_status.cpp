#include <QJsonObject>
#include <QPointer>

#include "chat/chat_section.hpp"
#include "clip/account.hpp"
#include "clip/clip_texts.hpp"
#include "clip/helper_status.hpp"
#include "clip/replay_buffer.hpp"
#include "dock/choices_section.hpp"
#include "dock/status_line.hpp"
#include "helper/helper_runner.hpp"

using namespace Qt::StringLiterals;

HelperStatus::HelperStatus(HelperRunner &helper, const Parts &parts, std::function<void()> onApplied)
	: helper_(helper)
	, parts_(parts)
	, onApplied_(std::move(onApplied))
{
}

void HelperStatus::refreshStatus()
{
	helper_.ask({u"--status"_s}, u"status"_s, [this](const QJsonObject &status) { applyStatus(status); });
}

void HelperStatus::applyStatus(const QJsonObject &status)
{
	// Starting the Replay Buffer may destroy the dock.
	const QPointer<HelperStatus> alive(this);
	parts_.account.applyStatus(status);
	if (parts_.account.isLinked()) {
		applyLinkedStatus(status);
	} else {
		parts_.status.setStatus(u"Not connected. Click Connect account (one click in your browser)."_s, false);
	}
	if (alive) {
		onApplied_();
	}
}

void HelperStatus::applyLinkedStatus(const QJsonObject &status)
{
	parts_.choices.refill(status);
	parts_.choices.decorateChoices();
	parts_.chat.loadChat();

	if (ReplayBuffer::isActive()) {
		parts_.status.setStatus(pressClipThatText(), false);
	} else {
		parts_.replayBuffer.ensureReplayBuffer();
	}
}
