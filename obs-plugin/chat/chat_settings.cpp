#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTimer>

#include "chat/chat_state.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"

#include <chrono>

using namespace std::chrono_literals;

// The helper keeps the chat command's settings; the section shows whatever it last answered.

void KestruneDock::loadChat()
{
	if (linked_)
		runHelper({QStringLiteral("--chat-get")}, [this](const QJsonObject &event) { onChatEvent(event); }, {});
}

void KestruneDock::saveChat()
{
	const QString settings = chatSettingsJson(chatEnabled_->isChecked(), chatCommand_->text(),
						  chatCooldown_->value(), chatCap_->value());
	chatState_->setText(QStringLiteral("Saving…"));
	runHelper({QStringLiteral("--chat-set"), settings}, [this](const QJsonObject &event) { onChatEvent(event); },
		  {});
}

void KestruneDock::onChatEvent(const QJsonObject &event)
{
	if (event[u"event"].toString() == u"chat")
		renderChatState(event);
}

void KestruneDock::renderChatState(const QJsonObject &chat)
{
	// An answer without settings, a mere failure for example, leaves what the user typed alone.
	if (chat.contains(u"command")) {
		chatEnabled_->setChecked(chat[u"enabled"].toBool());
		chatCommand_->setText(chat[u"command"].toString());
		chatCooldown_->setValue(chat[u"cooldown_s"].toInt(30));
		chatCap_->setValue(chat[u"per_stream_cap"].toInt(10));
	}

	chatActive_ = chatGranted(chat);
	const QString state = chatStateText(chat);
	chatState_->setText(state);
	// Tab stops here only when there is a link to follow; a failure's text is escaped and holds none.
	const bool hasLink = state.contains(u"<a ") && state.size() <= longestShownText;
	chatState_->setFocusPolicy(hasLink ? Qt::StrongFocus : Qt::NoFocus);
	if (chatActive_ && linked_)
		triggerTimer_->start(5s);
	else
		triggerTimer_->stop();
}
