#pragma once

#include <QObject>

#include <functional>

class Account;
class HelperRunner;
class QBoxLayout;
class QCheckBox;
class QFormLayout;
class QJsonObject;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTimer;

/// The section "Twitch chat command": its settings, which the helper keeps, and the polling for uses of the command. It
/// shows whatever the helper last answered.
class ChatSection : public QObject {
public:
	/// `onTrigger` is called when the command was typed in the chat, with the name of who typed it.
	ChatSection(QBoxLayout *content, QObject *dock, HelperRunner &helper, const Account &account,
		    std::function<void(const QString &name)> onTrigger);

	/// Asks the helper for the settings, when an account is linked.
	void loadChat();
	/// Gives the helper the settings as the section shows them.
	void saveChat();
	/// Asks the helper whether the command was typed, while it is active.
	void pollTriggers();

private:
	void buildForm(QFormLayout *form);
	void onChatEvent(const QJsonObject &event);
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
	QLabel *state_{nullptr};
	QTimer *triggerTimer_{nullptr};
	/// The helper last reported the command enabled and granted.
	bool active_{false};
	bool pollInFlight_{false};
};
