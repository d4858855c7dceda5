#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include "chat/chat_state.hpp"
#include "dock/dock_section.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/long_text_label.hpp"
#include "dock/shown_text.hpp"

#include <chrono>

using namespace std::chrono_literals;

// The helper keeps the chat command's settings; the section shows whatever it last answered.

void KestruneDock::buildChatSection(QVBoxLayout *content)
{
	QFormLayout *form = sectionForm(addSection(content, QStringLiteral("Twitch chat command (mods + you)"),
						   QStringLiteral("chatBox"), this));

	chatEnabled_ = new QCheckBox(QStringLiteral("Enabled"));
	chatCommand_ = new QLineEdit(QStringLiteral("!rune"));
	chatCommand_->setToolTip(
		QStringLiteral("Don't use !clip: Twitch, Nightbot and StreamElements already use it."));
	chatCooldown_ = new QSpinBox;
	chatCooldown_->setRange(10, 3600);
	chatCooldown_->setValue(30);
	chatCooldown_->setSuffix(QStringLiteral(" s"));
	chatCap_ = new QSpinBox;
	chatCap_->setRange(0, 100);
	chatCap_->setValue(10);
	chatCap_->setSpecialValueText(QStringLiteral("No cap"));
	auto *saveButton = new QPushButton(QStringLiteral("Save chat settings"));
	chatState_ = new LongTextLabel(QStringLiteral("Off. Connect your Twitch-linked account to use it."));
	chatState_->setWordWrap(true);
	chatState_->setOpenExternalLinks(true);
	chatState_->setTextFormat(Qt::RichText);

	form->addRow(chatEnabled_);
	form->addRow(QStringLiteral("Command"), chatCommand_);
	form->addRow(QStringLiteral("Cooldown"), chatCooldown_);
	form->addRow(QStringLiteral("Max per stream"), chatCap_);
	form->addRow(saveButton);
	form->addRow(chatState_);
	connect(saveButton, &QPushButton::clicked, this, &KestruneDock::saveChat);

	triggerTimer_ = new QTimer(this);
	connect(triggerTimer_, &QTimer::timeout, this, &KestruneDock::pollTriggers);
}

void KestruneDock::loadChat()
{
	if (linked_)
		runHelper({QStringLiteral("--chat-get")}, [this](const QJsonObject &event) { onChatEvent(event); }, {});
}

void KestruneDock::saveChat()
{
	const QString settings = chatSettingsJson(chatEnabled_->isChecked(), chatCommand_->text(),
						  chatCooldown_->value(), chatCap_->value());
	showChatState(QStringLiteral("Saving…"));
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
	showChatState(chatStateText(chat));
	if (chatActive_ && linked_)
		triggerTimer_->start(5s);
	else
		triggerTimer_->stop();
}

void KestruneDock::showChatState(const QString &text)
{
	chatState_->setText(text);
	// Tab stops here only when there is a link to follow; a failure's text is escaped and holds none.
	const bool hasLink = text.contains(u"<a ") && text.size() <= longestShownText;
	chatState_->setFocusPolicy(hasLink ? Qt::StrongFocus : Qt::NoFocus);
	if (!hasLink)
		chatState_->clearFocus();
}
