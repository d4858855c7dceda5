#include <QJsonDocument>

#include "helper/event_stream.hpp"

std::optional<QJsonObject> EventStream::next()
{
	while (const std::optional<QByteArray> line = nextLine()) {
		const QJsonDocument document = QJsonDocument::fromJson(line->trimmed());
		if (document.isObject()) {
			return document.object();
		}
	}
	return std::nullopt;
}

std::optional<QByteArray> EventStream::nextLine()
{
	const qsizetype newline = buffer_.indexOf('\n', searchStart_);
	if (newline < 0) {
		buffer_.remove(0, lineStart_);
		lineStart_ = 0;
		searchStart_ = buffer_.size();
		return std::nullopt;
	}

	QByteArray line = buffer_.sliced(lineStart_, newline - lineStart_);
	lineStart_ = newline + 1;
	searchStart_ = lineStart_;
	return line;
}
