#pragma once

#include <QObject>

#include <functional>

class Account;
class ChatSection;
class ChoicesSection;
class HelperRunner;
class QJsonObject;
class ReplayBuffer;
class StatusLine;

/// Asks the helper for "--status" and applies the answer to account, choices, chat command and Replay Buffer, in this
/// order.
class HelperStatus : public QObject {
public:
	struct Parts {
		StatusLine &status;
		Account &account;
		ChoicesSection &choices;
		ChatSection &chat;
		ReplayBuffer &replayBuffer;
	};

	/// `onApplied` is called after each "status" event.
	HelperStatus(HelperRunner &helper, const Parts &parts, std::function<void()> onApplied);

	void refreshStatus();

private:
	void applyStatus(const QJsonObject &status);
	void applyLinkedStatus(const QJsonObject &status);

	HelperRunner &helper_;
	Parts parts_;
	std::function<void()> onApplied_{};
};
