#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

/// Turns a helper's standard output into its events: one JSON object per line, ended by a newline (a carriage return
/// before it is fine). Lines that are not JSON objects are dropped; bytes after the last newline wait for more.
/// Work is linear in the bytes received, however they are cut into pieces.
class EventStream {
public:
	/// Takes the next bytes of the output.
	void append(const QByteArray &bytes);

	/// The next complete event, or nothing until more bytes come.
	std::optional<QJsonObject> next();

private:
	QByteArray buffer_{};
	qsizetype lineStart_{0};
	/// No newline lies between the line's start and here, so a long line is never searched twice.
	qsizetype searched_{0};
};
