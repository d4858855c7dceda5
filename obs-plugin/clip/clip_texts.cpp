#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include "clip/clip_texts.hpp"

using namespace Qt::StringLiterals;

QString waitingForBrowserText(const QString &code)
{
	return u"Finish in your browser (code "_s + code + u"). Waiting…"_s;
}

QString pressClipThatText()
{
	return u"Ready. Press Clip that or your Kestrune hotkey."_s;
}

QString savingText(const QString &length)
{
	// Without its "Last ".
	return u"Saving the last "_s + length.mid(5) + u"…"_s;
}

QString shortReadyText(const QJsonObject &done)
{
	QString text = u"Your Short is ready"_s;
	const QJsonArray shorts = done[u"formatted"].toArray();
	text += shorts.isEmpty() ? u"."_s : u": "_s + QFileInfo(shorts.first().toString()).fileName();

	const QString note = done[u"note"].toString();
	if (!note.isEmpty()) {
		text += u" ("_s + note + u")"_s;
	}
	return text;
}

QString clippedFromChatText(const QString &name)
{
	return u"Clipped from chat by @%1."_s.arg(name);
}
