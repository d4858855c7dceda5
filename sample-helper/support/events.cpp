#include <QJsonDocument>

#include "support/events.hpp"

#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

QString plainText(QString text)
{
	return text.replace(u'<', QChar(u'‹'));
}

void sendEvent(const QString &name, QJsonObject members)
{
	for (const QString &key : {u"error"_s, u"note"_s, u"notes"_s}) {
		if (members.contains(key)) {
			members[key] = plainText(members.value(key).toString());
		}
	}
	members[u"event"_s] = name;
	const QByteArray line = QJsonDocument(members).toJson(QJsonDocument::Compact) + '\n';
	std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
	std::fflush(stdout);
}

Failure::Failure(QString text, QJsonObject members)
	: text_(std::move(text))
	, utf8_(text_.toUtf8())
	, members_(std::move(members))
{
}

QString Failure::clause() const
{
	return text_.endsWith(u'.') ? text_.chopped(1) : text_;
}
