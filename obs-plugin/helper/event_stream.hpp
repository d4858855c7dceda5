#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

/// Turns a helper's standard output into its events: one JSON object per line, ended by a newline (a carriage return
/// before it is fine). Lines that are not JSON objects are dropped; bytes after the last newline wait for more. Work is
/// linear in the bytes received, however they are cut into pieces.
class EventStream {
public:
	/// Takes the next bytes of the output.
	void append(QByteArrayView bytes) { buffer_.append(bytes); }

	/// The next complete event, or nothing until more bytes come.
	std::optional<QJsonObject> next();

private:
	/// The next line without its newline, or nothing.
	std::optional<QByteArray> nextLine();

	QByteArray buffer_{};
	/// Where the first line begins that has not been taken; what is before it is done with.
	qsizetype lineStart_{0};
	/// There is no newline between `lineStart_` and here, so a long line is not searched again while it grows.
	qsizetype searchStart_{0};
};
