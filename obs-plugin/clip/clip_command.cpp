#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include "clip/clip_command.hpp"
#include "dock/choice_tables.hpp"

namespace {
void addUnlessEmpty(QStringList &arguments, const QString &name, const QString &value)
{
	if (!value.isEmpty())
		arguments << name << value;
}
} // namespace

QStringList processArguments(const QString &replayPath, const ClipChoices &choices)
{
	QStringList arguments{QStringLiteral("--process"), replayPath,
			      QStringLiteral("--seconds"), QString::number(choices.length_s),
			      QStringLiteral("--scene"),   QStringLiteral("obs")};
	addUnlessEmpty(arguments, QStringLiteral("--layout"), choices.layout);
	addUnlessEmpty(arguments, QStringLiteral("--style"), choices.style);
	addUnlessEmpty(arguments, QStringLiteral("--font"), choices.font);
	if (choices.style != QUtf8StringView(noCaptionsKey))
		arguments << QStringLiteral("--caption-position") << choices.captionPosition;
	return arguments;
}

QString readyText(const QJsonObject &done)
{
	QString text = QStringLiteral("Your Short is ready");
	const QJsonArray shorts = done[u"formatted"].toArray();
	text += shorts.isEmpty() ? QStringLiteral(".")
				 : QStringLiteral(": ") + QFileInfo(shorts.first().toString()).fileName();

	const QString note = done[u"note"].toString();
	if (!note.isEmpty())
		text += QStringLiteral(" (") + note + QStringLiteral(")");
	return text;
}

QString savingText(const QString &lengthText)
{
	return QStringLiteral("Saving the last ") + lengthText.mid(5) + QStringLiteral("…");
}
