#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

/// Splits a helper's standard output into events: one JSON object per line, ended by \n or \r\n. Drops lines that are
/// not JSON objects or longer than maxLine_bytes. Linear in the bytes received, whatever the chunks.
class EventStream {
public:
	/// No real event comes near it. A line of 256 MiB would take OBS a gigabyte, and two seconds to parse.
	static constexpr qsizetype maxLine_bytes = qsizetype{5} * 1024 * 1024;

	void append(QByteArrayView bytes) { buffer_.append(bytes); }

	/// The next complete event; nothing until more bytes come.
	std::optional<QJsonObject> next();

private:
	std::optional<QByteArray> nextLine();

	QByteArray buffer_{};
	/// Start of the first line not yet taken.
	qsizetype lineStart_{0};
	/// No newline lies between `lineStart_` and here, so a growing line is not searched again.
	qsizetype searchStart_{0};
	/// The line that is coming in is longer than maxLine_bytes; what came of it is gone.
	bool lineIsTooLong_{false};
};
