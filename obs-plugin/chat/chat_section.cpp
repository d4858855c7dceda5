#include <QCheckBox>
#include <QFormLayout>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include "chat/chat_section.hpp"
#include "chat/chat_texts.hpp"
#include "clip/account.hpp"
#include "dock/dock_section.hpp"
#include "dock/text_label.hpp"
#include "helper/helper_runner.hpp"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
constexpr int defaultCooldown_s = 30;
constexpr int defaultCap = 10;

QSpinBox *newSpinBox(int smallest, int largest, int value)
{
	auto *box = new QSpinBox;
	box->setRange(smallest, largest);
	box->setValue(value);
	return box;
}
} // namespace

ChatSection::ChatSection(QBoxLayout *content, QObject *dock, HelperRunner &helper, const Account &account,
			 std::function<void(const QString &name)> onTrigger)
	: helper_(helper)
	, account_(account)
	, onTrigger_(std::move(onTrigger))
	, triggerTimer_(new QTimer(dock))
{
	buildForm(sectionForm(addSection(content, u"Twitch chat command (mods + you)"_s, u"chatBox"_s, dock)));
	connect(triggerTimer_, &QTimer::timeout, this, &ChatSection::pollTriggers);
}

void ChatSection::buildForm(QFormLayout *form)
{
	enabled_ = new QCheckBox(u"Enabled"_s);
	command_ = new QLineEdit(u"!rune"_s);
	command_->setToolTip(u"Don't use !clip: Twitch, Nightbot and StreamElements already use it."_s);
	cooldown_ = newSpinBox(10, 3600, defaultCooldown_s);
	cooldown_->setSuffix(u" s"_s);
	cap_ = newSpinBox(0, 100, defaultCap);
	cap_->setSpecialValueText(u"No cap"_s);
	auto *saveButton = new QPushButton(u"Save chat settings"_s);
	state_ = new TextLabel(u"Off. Connect your Twitch-linked account to use it."_s);
	state_->setWordWrap(true);
	state_->setOpenExternalLinks(true);
	state_->setTextFormat(Qt::RichText);
	state_->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
	state_->setFocusPolicy(Qt::NoFocus); // until there is a link

	form->addRow(enabled_);
	form->addRow(u"Command"_s, command_);
	form->addRow(u"Cooldown"_s, cooldown_);
	form->addRow(u"Max per stream"_s, cap_);
	form->addRow(saveButton);
	form->addRow(state_);
	connect(saveButton, &QPushButton::clicked, this, &ChatSection::saveChat);
}

void ChatSection::loadChat()
{
	if (account_.isLinked()) {
		helper_.ask({u"--chat-get"_s}, u"chat"_s, [this](const QJsonObject &chat) { renderChatState(chat); });
	}
}

void ChatSection::saveChat()
{
	const QString settings =
		chatSettingsJson(enabled_->isChecked(), command_->text(), cooldown_->value(), cap_->value());
	showChatState(u"Saving…"_s);
	helper_.ask({u"--chat-set"_s, settings}, u"chat"_s, [this](const QJsonObject &chat) { renderChatState(chat); });
}

void ChatSection::renderChatState(const QJsonObject &chat)
{
	// An answer without settings, such as a failure, keeps what the user typed.
	if (chat.contains(u"command")) {
		enabled_->setChecked(chat[u"enabled"].toBool());
		command_->setText(chat[u"command"].toString());
		cooldown_->setValue(chat[u"cooldown_s"].toInt(defaultCooldown_s));
		cap_->setValue(chat[u"per_stream_cap"].toInt(defaultCap));
	}

	active_ = chatGranted(chat);
	showChatState(chatStateText(chat));
	if (active_ && account_.isLinked()) {
		triggerTimer_->start(5s);
	} else {
		triggerTimer_->stop();
	}
}

void ChatSection::showChatState(const QString &text)
{
	state_->setText(text);
	// Tab stops here only if there is a link. Errors are escaped, so they hold none.
	const bool hasLink = text.contains(u"<a ");
	state_->setFocusPolicy(hasLink ? Qt::StrongFocus : Qt::NoFocus);
	if (!hasLink) {
		state_->clearFocus();
	}
}

void ChatSection::pollTriggers()
{
	if (pollInFlight_ || !active_) {
		return;
	}

	// If the helper is missing or does not start, the run never ends and polling stops until OBS restarts. That is
	// intended: otherwise the dock would report it every five seconds.
	pollInFlight_ = true;
	helper_.runHelper(
		{u"--poll-triggers"_s}, [this](const QJsonObject &event) { onTriggersEvent(event); },
		[this](int) { pollInFlight_ = false; });
}

void ChatSection::onTriggersEvent(const QJsonObject &event) const
{
	if (event[u"event"].toString() != u"triggers") {
		return;
	}
	const QJsonArray triggers = event[u"triggers"].toArray();
	if (!triggers.isEmpty()) {
		// One clip per answer, however many asked. OBS may show a message box meanwhile, and this object may be
		// destroyed there: call a copy.
		const auto onTrigger = onTrigger_;
		onTrigger(triggers.last()[u"by"].toString());
	}
}
