#include <QFileInfo>
#include <QProcess>

#include "support/subprocess.hpp"

namespace subprocess {
namespace {

Outcome waitFor(QProcess &process, int limit_ms)
{
	if (!process.waitForStarted()) {
		return Outcome::NotStarted;
	}
	// A program that has ended by now is no failure of waiting.
	if (!process.waitForFinished(limit_ms) && process.state() != QProcess::NotRunning) {
		process.kill();
		process.waitForFinished();
		return Outcome::TimedOut;
	}
	return process.exitStatus() == QProcess::NormalExit ? Outcome::Finished : Outcome::Crashed;
}

} // namespace

Result run(const QString &path, const QStringList &arguments, const QString &workingFolder, int limit_ms)
{
	QProcess process;
	process.setWorkingDirectory(workingFolder);
	process.setStandardInputFile(QProcess::nullDevice());
	process.start(path, arguments);
	const Outcome outcome = waitFor(process, limit_ms);
	const Result result{outcome, process.exitCode(), process.readAllStandardOutput(),
			    QString::fromUtf8(process.readAllStandardError()).trimmed()};
	const QString name = QFileInfo(path).fileName();
	if (outcome == Outcome::NotStarted) {
		qWarning("%s: %s", qUtf8Printable(path), qUtf8Printable(process.errorString()));
	} else if (outcome == Outcome::TimedOut) {
		qWarning("%s %s\ntook longer than %d ms: stopped. %s", qUtf8Printable(name),
			 qUtf8Printable(arguments.join(QLatin1Char(' '))), limit_ms,
			 qUtf8Printable(result.errorOutput));
	} else if (!result.errorOutput.isEmpty()) {
		qInfo("%s %s\n%s", qUtf8Printable(name), qUtf8Printable(arguments.join(QLatin1Char(' '))),
		      qUtf8Printable(result.errorOutput));
	}
	return result;
}

} // namespace subprocess
