#include "support/events.hpp"

#include <QJsonDocument>

#include <cstdio>
#include <utility>

void sendEvent(const QString &name, QJsonObject members)
{
	members[QStringLiteral("event")] = name;
	const QByteArray line = QJsonDocument(members).toJson(QJsonDocument::Compact) + '\n';
	std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
	std::fflush(stdout);
}

Failure::Failure(QString text, QJsonObject members)
	: m_text(std::move(text))
	, m_utf8(m_text.toUtf8())
	, m_members(std::move(members))
{
}
