#pragma once

#include <QObject>

#include <functional>

class HelperRunner;
class QBoxLayout;
class QJsonObject;
class QLabel;
class QPushButton;
class StatusLine;

/// The user's account with the helper: whether one is linked, and linking it.
class Account : public QObject {
public:
	/// `onLinkingStarted` is called before a run that links, `onLinkingEnded` after its end.
	Account(QBoxLayout *content, HelperRunner &helper, StatusLine &status, std::function<void()> onLinkingStarted,
		std::function<void()> onLinkingEnded);

	/// Whether an account is linked, as the helper last reported.
	bool isLinked() const { return linked_; }
	/// Whether a run that links is under way.
	bool isLinking() const { return linking_; }

	/// Links an account: the helper names a web page, which opens in the user's browser.
	void connectAccount();
	/// Takes over what a "status" event says of the account.
	void applyStatus(const QJsonObject &status);

private:
	void onLinkEvent(const QJsonObject &event);

	HelperRunner &helper_;
	StatusLine &status_;
	std::function<void()> onLinkingStarted_{};
	std::function<void()> onLinkingEnded_{};
	QLabel *label_{nullptr};
	QPushButton *connectButton_{nullptr};
	bool linked_{false};
	bool linking_{false};
};
