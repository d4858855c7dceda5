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
		lineIsTooLong_ = lineIsTooLong_ || buffer_.size() > maxLine_bytes;
		if (lineIsTooLong_) {
			buffer_.clear();
		}
		searchStart_ = buffer_.size();
		return std::nullopt;
	}

	const qsizetype length = newline - lineStart_;
	const bool keep = !lineIsTooLong_ && length <= maxLine_bytes;
	QByteArray line = keep ? buffer_.sliced(lineStart_, length) : QByteArray();
	lineIsTooLong_ = false;
	lineStart_ = newline + 1;
	searchStart_ = lineStart_;
	return line;
}
