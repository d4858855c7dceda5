#pragma once

#include <QObject>

#include <functional>

class HelperRunner;
class QBoxLayout;
class QJsonObject;
class QPushButton;
class StatusLine;
class TextLabel;

/// The user's linked account, and the button that links it.
class Account : public QObject {
public:
	/// `onLinkingStarted` is called before the helper run that links, `onLinkingEnded` after it.
	Account(QBoxLayout *content, HelperRunner &helper, StatusLine &status, std::function<void()> onLinkingStarted,
		std::function<void()> onLinkingEnded);

	/// Whether the helper last reported a linked account.
	bool isLinked() const { return linked_; }
	/// Whether linking is under way.
	bool isLinking() const { return linking_; }

	/// Links an account: the helper names a web page, which opens in the browser.
	void connectAccount();
	/// Applies a "status" event to the account.
	void applyStatus(const QJsonObject &status);

private:
	void onLinkEvent(const QJsonObject &event);

	HelperRunner &helper_;
	StatusLine &status_;
	std::function<void()> onLinkingStarted_{};
	std::function<void()> onLinkingEnded_{};
	TextLabel *label_{nullptr};
	QPushButton *connectButton_{nullptr};
	bool linked_{false};
	bool linking_{false};
};
