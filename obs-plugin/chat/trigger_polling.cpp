#include <QJsonArray>

#include "dock/kestrune_dock.hpp"

void KestruneDock::pollTriggers()
{
	if (triggerPollBusy_ || !chatActive_)
		return;

	triggerPollBusy_ = true;
	runHelper(
		{QStringLiteral("--poll-triggers")}, [this](const QJsonObject &event) { onTriggers(event); },
		[this](int) { triggerPollBusy_ = false; });
}

void KestruneDock::onTriggers(const QJsonObject &event)
{
	if (event[u"event"].toString() != u"triggers")
		return;
	const QJsonArray triggers = event[u"triggers"].toArray();
	if (triggers.isEmpty())
		return;

	// One answer makes one clip, however many asked for it.
	const QString name = triggers.last()[u"by"].toString();
	clipThat();
	setStatus(QStringLiteral("Clipped from chat by @%1.").arg(name), false);
}
