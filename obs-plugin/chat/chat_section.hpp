#pragma once

#include <QObject>

#include <functional>

class Account;
class HelperRunner;
class QBoxLayout;
class QCheckBox;
class QFormLayout;
class QJsonObject;
class QLineEdit;
class QSpinBox;
class QTimer;
class TextLabel;

/// The section "Twitch chat command": shows the settings, which the helper stores, and polls for uses of the command.
class ChatSection : public QObject {
public:
	/// `onTrigger` gets the name of whoever typed the command.
	ChatSection(QBoxLayout *content, QObject *dock, HelperRunner &helper, const Account &account,
		    std::function<void(const QString &name)> onTrigger);

	/// Asks the helper for the settings if an account is linked.
	void loadChat();
	/// Sends the settings as shown to the helper.
	void saveChat();
	/// Asks the helper whether someone typed the command, while it is active.
	void pollTriggers();

private:
	void buildForm(QFormLayout *form);
	void renderChatState(const QJsonObject &chat);
	void showChatState(const QString &text);
	void onTriggersEvent(const QJsonObject &event) const;

	HelperRunner &helper_;
	const Account &account_;
	std::function<void(const QString &name)> onTrigger_{};
	QCheckBox *enabled_{nullptr};
	QLineEdit *command_{nullptr};
	QSpinBox *cooldown_{nullptr};
	QSpinBox *cap_{nullptr};
	TextLabel *state_{nullptr};
	QTimer *triggerTimer_{nullptr};
	/// The helper last reported the command as enabled and granted.
	bool active_{false};
	bool pollInFlight_{false};
};
