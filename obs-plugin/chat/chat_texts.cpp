#include <QJsonDocument>
#include <QJsonObject>

#include "chat/chat_texts.hpp"
#include "dock/shown_text.hpp"

using namespace Qt::StringLiterals;

namespace {
// Windows opens no longer one, and millions of characters would hold up OBS.
constexpr qsizetype maxAddress = 32'767;
} // namespace

bool chatGranted(const QJsonObject &chat)
{
	return chat[u"enabled"].toBool() && chat[u"granted"].toBool();
}

QString chatStateText(const QJsonObject &chat)
{
	const QString error = chat[u"error"].toString();
	if (!error.isEmpty()) {
		return shownText(error).toHtmlEscaped();
	}
	if (!chat[u"enabled"].toBool()) {
		return u"Off."_s;
	}
	if (!chat[u"granted"].toBool()) {
		const QString address = chat[u"consent_url"].toString();
		return u"One more step: <a href=\"%1\">allow Kestrune to read your Twitch chat</a>. "
		       "It switches on by itself afterwards."_s.arg(
			       address.size() > maxAddress ? QString() : address.toHtmlEscaped());
	}
	return u"On: mods can type <b>%1</b> (%2 used this stream)."_s.arg(
		shownText(chat[u"command"].toString()).toHtmlEscaped(), QString::number(chat[u"stream_count"].toInt()));
}

QString chatSettingsJson(bool enabled, const QString &command, int cooldown_s, int perStreamCap)
{
	const QJsonObject settings{{u"enabled"_s, enabled},
				   {u"command"_s, command.trimmed()},
				   {u"cooldown_s"_s, cooldown_s},
				   {u"per_stream_cap"_s, perStreamCap}};
	return QString::fromUtf8(QJsonDocument(settings).toJson(QJsonDocument::Compact));
}
