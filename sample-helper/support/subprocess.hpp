#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>

/// Other programs, run to their end.
namespace subprocess {
enum class Outcome : std::uint8_t { Finished, NotStarted, Crashed, TimedOut, Hung };

struct Result {
	Outcome outcome{};
	/// Only meaningful once finished.
	int exitCode{0};
	/// The last maxOutput_bytes of standard output.
	QByteArray output{};
	/// The last of what came on standard error, without blanks around it.
	QString errorOutput{};

	bool succeeded() const { return outcome == Outcome::Finished && exitCode == 0; }
};

/// When to lose patience with a program; -1 is never.
struct Limits {
	/// How long it may take.
	int total_ms{-1};
	/// How long its standard output and `growingFile` may both stand still.
	int still_ms{-1};
	/// A file that it writes, if any.
	QString growingFile{};
};

/// More of a program's output is not kept in memory. What is said last counts most.
inline constexpr qsizetype maxOutput_bytes = qsizetype{16} * 1024 * 1024;

/// Runs a program in `workingFolder` (the current one when empty) and waits for its end. It leaves the processor to
/// others when they need it, and ends at once when this program is killed. What it says on standard error goes to the
/// log as well. One that exceeds a limit is killed.
Result run(const QString &path, const QStringList &arguments, const QString &workingFolder, const Limits &limits = {});
} // namespace subprocess
