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

/// The helper's answer to "--status": it concerns the account, the choices, the chat command and the Replay Buffer, in
/// this order.
class HelperStatus : public QObject {
public:
	/// What a "status" event is applied to.
	struct Parts {
		StatusLine &status;
		Account &account;
		ChoicesSection &choices;
		ChatSection &chat;
		ReplayBuffer &replayBuffer;
	};

	/// `onApplied` is called after each "status" event.
	HelperStatus(HelperRunner &helper, const Parts &parts, std::function<void()> onApplied);

	/// Asks the helper.
	void refreshStatus();

private:
	void applyStatus(const QJsonObject &event);
	void applyLinkedStatus(const QJsonObject &status);

	HelperRunner &helper_;
	Parts parts_;
	std::function<void()> onApplied_{};
};
