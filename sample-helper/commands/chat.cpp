#include <QCommandLineParser>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>

#include "commands/chat.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/state.hpp"

#include <algorithm>
#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1StringView chatFile("chat.json");
constexpr QLatin1StringView enabledKey("enabled");
constexpr QLatin1StringView commandKey("command");
constexpr QLatin1StringView cooldownKey("cooldown_s");
constexpr QLatin1StringView capKey("per_stream_cap");
constexpr QLatin1StringView grantedKey("granted");
constexpr QLatin1StringView countKey("stream_count");
constexpr QLatin1StringView errorKey("error");
// Not part of any event: when consent was asked for, when the command was last used, and messages not yet polled.
constexpr QLatin1StringView askedKey("consent_asked_ms");
constexpr QLatin1StringView lastUseKey("last_use_ms");
constexpr QLatin1StringView messagesKey("messages");
constexpr QLatin1StringView byKey("by");
constexpr QLatin1StringView textKey("text");
constexpr QLatin1StringView atKey("at_ms");

// Twitch's limit for messages; names are shorter.
constexpr qsizetype maxMessage = 500;

double now_ms()
{
	return static_cast<double>(QDateTime::currentMSecsSinceEpoch());
}

bool isOn(const QJsonObject &chat)
{
	return chat.value(enabledKey).toBool() && chat.value(grantedKey).toBool();
}

void fillInDefaults(QJsonObject &chat)
{
	const QJsonObject defaults{{enabledKey, false}, {commandKey, u"!rune"_s}, {cooldownKey, 30},
				   {capKey, 10},        {grantedKey, false},      {countKey, 0}};
	for (auto member = defaults.begin(); member != defaults.end(); ++member) {
		if (!chat.contains(member.key())) {
			chat[member.key()] = member.value();
		}
	}
}

/// Asks for the consent that reading the chat needs, and takes it as given once that is long enough ago.
void grantDueConsent(QJsonObject &chat)
{
	if (chat.value(grantedKey).toBool() || !chat.value(enabledKey).toBool()) {
		return;
	}
	const double now = now_ms();
	// A time in the future comes from a clock that was wrong.
	if (!chat.contains(askedKey) || chat.value(askedKey).toDouble() > now) {
		chat[askedKey] = now;
	}
	if (now - chat.value(askedKey).toDouble() >= environment::consentDelay_ms()) {
		chat[grantedKey] = true;
		chat.remove(askedKey);
	}
}

void bringUpToDate(QJsonObject &chat)
{
	fillInDefaults(chat);
	grantDueConsent(chat);
}

void sendChat(const QJsonObject &chat)
{
	QJsonObject members{};
	for (const QLatin1StringView key : {enabledKey, commandKey, cooldownKey, capKey, grantedKey, countKey}) {
		members[key] = chat.value(key);
	}
	if (chat.value(enabledKey).toBool() && !chat.value(grantedKey).toBool()) {
		members[u"consent_url"_s] = state::writePage(
			u"consent.html"_s, u"Kestrune sample helper"_s,
			u"Reading the chat counts as allowed in a moment. There is nothing to click, and no "
			"real chat is read: messages come from <b>sample-helper --say NAME</b>."_s);
	}
	sendEvent(u"chat"_s, members);
}

/// Sends the reason for a failure where the dock expects it.
int refuse(const QString &reason)
{
	QJsonObject stored = state::read(chatFile);
	bringUpToDate(stored);
	QString sentence = reason;
	sentence.front() = sentence.front().toUpper();
	// Without "command" the dock leaves what was typed in its fields, so that it can be corrected there.
	sendEvent(
		u"chat"_s,
		{{errorKey, sentence}, {enabledKey, stored.value(enabledKey)}, {grantedKey, stored.value(grantedKey)}});
	return 1;
}

/// Changes the settings and answers with what is stored then.
int answerAfter(const std::function<void(QJsonObject &)> &change)
{
	try {
		sendChat(state::update(chatFile, change));
		return 0;
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
		return refuse(failure.text());
	}
}

bool isWholeNumber(const QJsonValue &value, int least, int most)
{
	const double number = value.toDouble(-1);
	return value.isDouble() && number >= least && number <= most && std::floor(number) == number;
}

/// Why these settings are refused; empty if they are fine.
QString complaintAbout(const QJsonDocument &document)
{
	if (!document.isObject()) {
		return u"The chat settings aren't a JSON object."_s;
	}
	const QJsonObject wanted = document.object();
	if (wanted.contains(enabledKey) && !wanted.value(enabledKey).isBool()) {
		return u"\"enabled\" must be true or false."_s;
	}
	if (wanted.contains(commandKey)) {
		const QString command = wanted.value(commandKey).toString();
		const bool hasBlank = std::any_of(command.begin(), command.end(), [](QChar c) { return c.isSpace(); });
		if (command.size() < 2 || !command.startsWith(u'!') || hasBlank) {
			return u"The command must be one word that begins with \"!\", for example !rune."_s;
		}
		if (command.size() > maxMessage) {
			return u"The command is longer than a message in chat can be."_s;
		}
	}
	if (wanted.contains(cooldownKey) && !isWholeNumber(wanted.value(cooldownKey), 0, 3600)) {
		return u"The cooldown must be a whole number from 0 to 3600 seconds."_s;
	}
	if (wanted.contains(capKey) && !isWholeNumber(wanted.value(capKey), 0, 100)) {
		return u"The cap per stream must be a whole number from 0 to 100 (0 for no cap)."_s;
	}
	return {};
}

bool isCommand(const QString &message, const QString &command)
{
	const QString firstWord = message.simplified().section(u' ', 0, 0);
	return firstWord.compare(command, Qt::CaseInsensitive) == 0;
}

/// Takes the waiting messages out of the chat and returns those that trigger a clip.
QJsonArray takeTriggers(QJsonObject &chat)
{
	QJsonArray triggers{};
	const QJsonArray messages = chat.take(messagesKey).toArray();
	for (const auto &value : messages) {
		const QJsonObject message = value.toObject();
		const double at = message.value(atKey).toDouble();
		// Negative after a clock that was wrong.
		const double sinceLastUse_ms = at - chat.value(lastUseKey).toDouble();
		// Bounded, whatever the file holds, so that it can be counted up.
		const int count = qBound(0, chat.value(countKey).toInt(), 1'000'000);
		const int cap = chat.value(capKey).toInt();
		const bool cooling = chat.contains(lastUseKey) && sinceLastUse_ms >= 0 &&
				     sinceLastUse_ms < chat.value(cooldownKey).toInt() * 1000.0;
		if (!isOn(chat) || cooling || (cap > 0 && count >= cap) ||
		    !isCommand(message.value(textKey).toString(), chat.value(commandKey).toString())) {
			continue;
		}
		chat[lastUseKey] = at;
		chat[countKey] = count + 1;
		triggers += QJsonObject{{byKey, plainText(message.value(byKey).toString())}};
	}
	return triggers;
}
} // namespace

int runChatGet(const QCommandLineParser &)
{
	return answerAfter(bringUpToDate);
}

int runChatSet(const QCommandLineParser &parser)
{
	const QJsonDocument document = QJsonDocument::fromJson(parser.value(u"chat-set"_s).toUtf8());
	const QString complaint = complaintAbout(document);
	if (!complaint.isEmpty()) {
		return refuse(complaint);
	}
	const QJsonObject wanted = document.object();
	return answerAfter([&wanted](QJsonObject &chat) {
		for (const QLatin1StringView key : {enabledKey, commandKey, cooldownKey, capKey}) {
			if (wanted.contains(key)) {
				chat[key] = wanted.value(key);
			}
		}
		bringUpToDate(chat);
	});
}

int runPollTriggers(const QCommandLineParser &)
{
	QJsonArray triggers{};
	state::update(chatFile, [&triggers](QJsonObject &chat) {
		bringUpToDate(chat);
		triggers = takeTriggers(chat);
	});
	sendEvent(u"triggers"_s, {{u"triggers"_s, triggers}});
	return 0;
}

int runSay(const QCommandLineParser &parser)
{
	constexpr qsizetype maxMessages = 100;
	const QString by = parser.value(u"say"_s).left(maxMessage);
	QString text = parser.positionalArguments().join(u' ').left(maxMessage);
	state::update(chatFile, [&](QJsonObject &chat) {
		bringUpToDate(chat);
		if (text.isEmpty()) {
			text = chat.value(commandKey).toString();
		}
		QJsonArray messages = chat.value(messagesKey).toArray();
		messages += QJsonObject{{byKey, by}, {textKey, text}, {atKey, now_ms()}};
		while (messages.size() > maxMessages) {
			messages.removeFirst();
		}
		chat[messagesKey] = messages;
	});
	sendEvent(u"said"_s, {{byKey, by}, {textKey, text}});
	return 0;
}

int runNewStream(const QCommandLineParser &)
{
	return answerAfter([](QJsonObject &chat) {
		bringUpToDate(chat);
		chat[countKey] = 0;
		chat.remove(lastUseKey);
	});
}
