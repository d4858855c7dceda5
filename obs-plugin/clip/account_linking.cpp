#include <QDesktopServices>
#include <QPointer>
#include <QPushButton>
#include <QUrl>

#include "dock/kestrune_dock.hpp"

void KestruneDock::connectAccount()
{
	if (linking_)
		return;

	linking_ = true;
	connectButton_->setEnabled(false);
	updateClipButton();
	setStatus(QStringLiteral("Opening your browser…"), false);
	runHelper(
		{QStringLiteral("--link"), QStringLiteral("--no-browser")},
		[this](const QJsonObject &event) { onLinkEvent(event); },
		[this](int) {
			linking_ = false;
			connectButton_->setEnabled(true);
			refreshStatus();
		});
}

void KestruneDock::onLinkEvent(const QJsonObject &event)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"code") {
		// Opening a browser may let anything happen, even the end of the dock.
		const QPointer<KestruneDock> self(this);
		QDesktopServices::openUrl(QUrl(event[u"url"].toString()));
		if (!self)
			return;
		setStatus(QStringLiteral("Finish in your browser (code ") + event[u"code"].toString() +
				  QStringLiteral("). Waiting…"),
			  false);
	} else if (kind == u"linked") {
		setStatus(QStringLiteral("Connected!"), false);
	} else if (kind == u"error") {
		setStatus(event[u"error"].toString(), true);
	}
}
