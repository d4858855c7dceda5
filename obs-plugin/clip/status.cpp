#include <QComboBox>
#include <QJsonArray>
#include <QLabel>
#include <QPushButton>

#include "clip/clip_readiness.hpp"
#include "dock/choice_tables.hpp"
#include "dock/kestrune_dock.hpp"

#include <obs-frontend-api.h>

namespace {
/// The elements of a JSON array as strings; empty strings for those of another type.
QStringList toStrings(const QJsonArray &array)
{
	QStringList strings;
	for (const QJsonValue value : array)
		strings << value.toString();
	return strings;
}

/// Refills a choice box from the helper's list; the user's own choice wins over the helper's current one.
void refillFrom(const QJsonObject &status, QComboBox *box, ChoiceTable table, QStringView keysMember,
		QStringView currentMember, const QString &preferredKey)
{
	const QString desiredKey = preferredKey.isEmpty() ? status[currentMember].toString() : preferredKey;
	refillChoices(box, table, toStrings(status[keysMember].toArray()), desiredKey);
}
} // namespace

void KestruneDock::refreshStatus()
{
	runHelper({QStringLiteral("--status")}, [this](const QJsonObject &event) { applyStatus(event); }, {});
}

void KestruneDock::applyStatus(const QJsonObject &status)
{
	if (status[u"event"].toString() != u"status")
		return;

	linked_ = status[u"linked"].toBool();
	connectButton_->setVisible(!linked_);
	if (linked_) {
		applyLinkedStatus(status);
	} else {
		accountLabel_->setText(status[u"error"].toString() == u"revoked"
					       ? QStringLiteral("This device was revoked. Connect again.")
					       : QStringLiteral("Not connected"));
		setStatus(QStringLiteral("Not connected. Click Connect account (one click in your browser)."), false);
	}
	updateClipButton();
}

void KestruneDock::applyLinkedStatus(const QJsonObject &status)
{
	accountLabel_->setText(QStringLiteral("Connected as @") + status[u"login"].toString() +
			       (status[u"offline"].toBool() ? QStringLiteral(" (offline)") : QString()));

	refillFrom(status, layoutBox_, layoutTable, u"layouts", u"layout", preferredLayout_);
	refillFrom(status, styleBox_, styleTable, u"styles", u"style", preferredStyle_);
	refillFrom(status, fontBox_, fontTable, u"fonts", u"font", preferredFont_);
	decorateChoices();
	loadChat();

	if (obs_frontend_replay_buffer_active())
		setStatus(QStringLiteral("Ready. Press Clip that or your Kestrune hotkey."), false);
	else
		ensureReplayBuffer();
}

void KestruneDock::updateClipButton()
{
	const ClipReadiness readiness{linked_, obs_frontend_replay_buffer_active(), linking_};
	clipButton_->setEnabled(canClip(readiness));
	clipButton_->setToolTip(clipButtonToolTip(readiness));

	// Only a stale "Ready" is replaced; an error or a progress message is news that the user still needs.
	if (readiness.linked && !readiness.replayBufferActive && clipJobsRunning_ == 0 &&
	    status_->text().startsWith(u"Ready"))
		setStatus(QStringLiteral("Replay Buffer is off. Starting it…"), false);
}
