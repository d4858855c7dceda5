#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>

/// Other programs, run to their end.
namespace subprocess {

enum class Outcome : std::uint8_t { Finished, NotStarted, Crashed, TimedOut };

struct Result {
	Outcome outcome{};
	/// Only meaningful once finished.
	int exitCode{};
	QByteArray output{};
	QString errorOutput{};

	bool succeeded() const { return outcome == Outcome::Finished && exitCode == 0; }
};

/// Runs a program in `workingFolder` (the current one when empty) and waits for its end. What it says on standard error
/// goes to the log as well. A program that takes longer than `limit_ms` is killed; -1 waits for ever.
Result run(const QString &path, const QStringList &arguments, const QString &workingFolder, int limit_ms = -1);

} // namespace subprocess
