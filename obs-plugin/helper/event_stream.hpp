#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

/// Turns a helper's standard output into its events: one JSON object per line, ended by a newline (a carriage return
/// before it is fine). Lines that are not JSON objects are dropped; bytes after the last newline wait for more.
/// Work is linear in the bytes received, however they are cut into pieces.
class EventStream {
public:
	EventStream() = default;
	Q_DISABLE_COPY_MOVE(EventStream)

	/// Takes the next bytes of the output.
	void append(QByteArrayView bytes)
	{
		// A helper may flush every byte; a call for each would then take longer than the parser.
		if (bytes.size() != 1 || end_ == roomEnd_) {
			appendPiece(bytes);
			return;
		}
		const char byte = bytes.front();
		if (byte == '\n')
			lineEnded_ = true;
		*end_++ = byte;
	}

	/// The next complete event, or nothing until more bytes come.
	std::optional<QJsonObject> next()
	{
		if (!lineEnded_)
			return std::nullopt;
		return nextOfLines();
	}

private:
	void appendPiece(QByteArrayView bytes);
	std::optional<QJsonObject> nextOfLines();

	/// Its bytes up to `end_` are received, those before `lineStart_` are done with; the rest, up to `roomEnd_`, is
	/// room for more.
	QByteArray room_{};
	char *end_{room_.data()};
	char *roomEnd_{end_};
	qsizetype lineStart_{0};
	/// A newline has come since `next` last found none. Until then nothing is searched, so a long line is not
	/// searched again and again while it grows.
	bool lineEnded_{false};
};
