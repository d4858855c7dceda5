#include <QJsonDocument>

#include "helper/event_stream.hpp"

#include <algorithm>

void EventStream::appendPiece(QByteArrayView bytes)
{
	if (roomEnd_ - end_ < bytes.size()) {
		const qsizetype size = end_ - room_.data();
		// Qt makes more room than it is asked for.
		room_.resize(size + bytes.size());
		room_.resize(room_.capacity());
		end_ = room_.data() + size;
		roomEnd_ = room_.data() + room_.size();
	}
	end_ = std::ranges::copy(bytes, end_).out;
	lineEnded_ = lineEnded_ || bytes.contains('\n');
}

std::optional<QJsonObject> EventStream::nextOfLines()
{
	const QByteArrayView received(room_.data(), end_);
	for (;;) {
		const qsizetype newline = received.indexOf('\n', lineStart_);
		if (newline < 0) {
			end_ = std::ranges::copy(received.sliced(lineStart_), room_.data()).out;
			lineStart_ = 0;
			lineEnded_ = false;
			return std::nullopt;
		}

		const QByteArrayView line = received.sliced(lineStart_, newline - lineStart_).trimmed();
		const QJsonDocument document =
			QJsonDocument::fromJson(QByteArray::fromRawData(line.data(), line.size()));
		lineStart_ = newline + 1;
		if (document.isObject())
			return document.object();
	}
}
