#include <QJsonDocument>

#include "helper/event_stream.hpp"

void EventStream::append(const QByteArray &bytes)
{
	buffer_.append(bytes);
}

std::optional<QJsonObject> EventStream::next()
{
	for (;;) {
		const qsizetype newline = buffer_.indexOf('\n', searched_);
		if (newline < 0) {
			buffer_.remove(0, lineStart_);
			lineStart_ = 0;
			searched_ = buffer_.size();
			return std::nullopt;
		}

		const QByteArrayView line = QByteArrayView(buffer_).sliced(lineStart_, newline - lineStart_).trimmed();
		const QJsonDocument document =
			QJsonDocument::fromJson(QByteArray::fromRawData(line.data(), line.size()));
		lineStart_ = newline + 1;
		searched_ = lineStart_;
		if (document.isObject())
			return document.object();
	}
}
