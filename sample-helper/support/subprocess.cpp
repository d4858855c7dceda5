#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include "support/background_process.hpp"
#include "support/platform.hpp"
#include "support/subprocess.hpp"

#include <algorithm>

namespace subprocess {
namespace {
constexpr qsizetype maxErrorOutput_bytes = qsizetype{64} * 1024;
/// How often limits are looked at.
constexpr int glance_ms = 200;
constexpr qint64 maxGap_ms = 3000;

/// Appends to what is kept of an output, and forgets the oldest of it beyond the limit.
void keepLast(QByteArray &kept, const QByteArray &more, qsizetype limit_bytes)
{
	kept += more;
	// Trimming on every call would cost more time than the memory is worth.
	if (kept.size() > 2 * limit_bytes) {
		kept = kept.last(limit_bytes);
	}
}

/// A program's output so far.
class Output {
public:
	/// QProcess would keep all that comes until the program ends; so it is taken as it comes.
	explicit Output(QProcess &process)
	{
		QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [this, &process] {
			const QByteArray more = process.readAllStandardOutput();
			count_bytes_ += more.size();
			keepLast(output_, more, maxOutput_bytes);
		});
		QObject::connect(&process, &QProcess::readyReadStandardError, &process, [this, &process] {
			keepLast(errors_, process.readAllStandardError(), maxErrorOutput_bytes);
		});
	}

	qint64 count_bytes() const { return count_bytes_; }
	QByteArray output() const { return output_.last(std::min(output_.size(), maxOutput_bytes)); }
	QString errorOutput() const
	{
		return QString::fromUtf8(errors_.last(std::min(errors_.size(), maxErrorOutput_bytes))).trimmed();
	}

private:
	qint64 count_bytes_{0};
	QByteArray output_{};
	QByteArray errors_{};
};

/// Watches whether a program makes progress.
class Watch {
public:
	explicit Watch(const Limits &limits)
		: limits_(limits)
	{
		total_.start();
		still_.start();
		sinceLook_.start();
	}

	/// The limit that is exceeded now; Finished when none is.
	Outcome look(const Output &output)
	{
		// A look this late means that we were suspended, and the program with us.
		if (sinceLook_.restart() > maxGap_ms) {
			total_.start();
			still_.start();
		}
		const QFileInfo file(limits_.growingFile);
		const Sight sight{output.count_bytes(), file.size(), file.lastModified().toMSecsSinceEpoch()};
		if (sight != last_) {
			last_ = sight;
			still_.start();
		}
		if (limits_.total_ms >= 0 && total_.hasExpired(limits_.total_ms)) {
			return Outcome::TimedOut;
		}
		return limits_.still_ms >= 0 && still_.hasExpired(limits_.still_ms) ? Outcome::Hung : Outcome::Finished;
	}

private:
	struct Sight {
		qint64 output_bytes{0};
		qint64 file_bytes{0};
		/// The end of an MP4 file is written over and over without making it longer.
		qint64 fileTime_ms{0};

		bool operator==(const Sight &) const = default;
	};

	Limits limits_{};
	QElapsedTimer total_{};
	QElapsedTimer still_{};
	QElapsedTimer sinceLook_{};
	Sight last_{};
};

Outcome waitFor(QProcess &process, const Output &output, const Limits &limits)
{
	if (!process.waitForStarted()) {
		return Outcome::NotStarted;
	}
	Watch watch(limits);
	// A program that has ended by now is no failure of waiting.
	while (!process.waitForFinished(glance_ms) && process.state() != QProcess::NotRunning) {
		const Outcome outcome = watch.look(output);
		if (outcome != Outcome::Finished) {
			process.kill();
			process.waitForFinished();
			return outcome;
		}
	}
	return process.exitStatus() == QProcess::NormalExit ? Outcome::Finished : Outcome::Crashed;
}

void log(const QProcess &process, const Result &result, const Limits &limits)
{
	const QString call = QFileInfo(process.program()).fileName() + u' ' + process.arguments().join(u' ');
	switch (result.outcome) {
	case Outcome::NotStarted:
		qWarning("%s: %s", qUtf8Printable(process.program()), qUtf8Printable(process.errorString()));
		return;
	case Outcome::TimedOut:
		qWarning("%s\ntook longer than %d ms: stopped. %s", qUtf8Printable(call), limits.total_ms,
			 qUtf8Printable(result.errorOutput));
		return;
	case Outcome::Hung:
		qWarning("%s\nstood still for %d ms: stopped. %s", qUtf8Printable(call), limits.still_ms,
			 qUtf8Printable(result.errorOutput));
		return;
	case Outcome::Finished:
	case Outcome::Crashed:
		break;
	}
	if (!result.errorOutput.isEmpty()) {
		qInfo("%s\n%s", qUtf8Printable(call), qUtf8Printable(result.errorOutput));
	}
}
} // namespace

Result run(const QString &path, const QStringList &arguments, const QString &workingFolder, const Limits &limits)
{
	QProcess process;
	runInBackground(process);
	process.setWorkingDirectory(platform::asWorkingFolder(workingFolder));
	process.setStandardInputFile(QProcess::nullDevice());
	const Output output(process);
	process.start(path, arguments);
	const Outcome outcome = waitFor(process, output, limits);
	const Result result{outcome, process.exitCode(), output.output(), output.errorOutput()};
	log(process, result, limits);
	return result;
}
} // namespace subprocess
