#include <QDesktopServices>
#include <QHBoxLayout>
#include <QJsonObject>
#include <QPointer>
#include <QPushButton>
#include <QUrl>

#include "clip/account.hpp"
#include "clip/clip_texts.hpp"
#include "dock/shown_text.hpp"
#include "dock/status_line.hpp"
#include "dock/text_label.hpp"
#include "helper/helper_runner.hpp"

using namespace Qt::StringLiterals;

Account::Account(QBoxLayout *content, HelperRunner &helper, StatusLine &status, std::function<void()> onLinkingStarted,
		 std::function<void()> onLinkingEnded)
	: helper_(helper)
	, status_(status)
	, onLinkingStarted_(std::move(onLinkingStarted))
	, onLinkingEnded_(std::move(onLinkingEnded))
{
	auto *row = new QHBoxLayout;
	row->setSpacing(4);
	label_ = new TextLabel(u"Not connected"_s);
	label_->setWordWrap(true);
	row->addWidget(label_, 1);
	connectButton_ = new QPushButton(u"Connect account"_s);
	row->addWidget(connectButton_, 0);
	content->addLayout(row);

	connect(connectButton_, &QPushButton::clicked, this, &Account::connectAccount);
}

void Account::connectAccount()
{
	if (linking_) {
		return;
	}

	linking_ = true;
	connectButton_->setEnabled(false);
	onLinkingStarted_();
	status_.setStatus(u"Opening your browser…"_s, false);
	// If the helper is missing or does not start, the run never ends and linking stays disabled until OBS restarts.
	// The status line says what to do, and reinstalling the helper takes a restart anyway.
	helper_.runHelper(
		{u"--link"_s, u"--no-browser"_s}, [this](const QJsonObject &event) { onLinkEvent(event); },
		[this](int) {
			linking_ = false;
			connectButton_->setEnabled(true);
			onLinkingEnded_();
		});
}

void Account::onLinkEvent(const QJsonObject &event)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"code") {
		// Opening a browser may run an event loop, which may destroy the dock.
		const QPointer<Account> alive(this);
		QDesktopServices::openUrl(QUrl(event[u"url"].toString()));
		if (alive) {
			status_.setStatus(waitingForBrowserText(event[u"code"].toString()), false);
		}
	} else if (kind == u"linked") {
		status_.setStatus(u"Connected!"_s, false);
	} else if (kind == u"error") {
		status_.setStatus(event[u"error"].toString(), true);
	}
}

void Account::applyStatus(const QJsonObject &status)
{
	linked_ = status[u"linked"].toBool();
	connectButton_->setVisible(!linked_);
	if (linked_) {
		label_->showText(u"Connected as @"_s + shownText(status[u"login"].toString()) +
				 (status[u"offline"].toBool() ? u" (offline)"_s : QString()));
	} else {
		label_->showText(status[u"error"].toString() == u"revoked"
					 ? u"This device was revoked. Connect again."_s
					 : u"Not connected"_s);
	}
}
