#include <QPointer>
#include <QProcess>
#include <QTimer>

#include "dock/kestrune_dock.hpp"
#include "helper/hidden_process.hpp"
#include "update/elevated_process.hpp"
#include "update/installer_limit.hpp"
#include "update/manifest.hpp"
#include "update/update_texts.hpp"

void KestruneDock::runInstaller(const QString &installerPath)
{
	setUpdateState(QStringLiteral("installing"), installingText(latestVersion_));
	installStarted_.start();

	const QString runner = qEnvironmentVariable("KESTRUNE_UPDATE_RUNNER");
	if (runner.isEmpty())
		startElevatedInstaller(installerPath);
	else
		startUpdateRunner(runner, installerPath);
}

void KestruneDock::startElevatedInstaller(const QString &installerPath)
{
	// The prompt is the system's, and the wait for its answer may let anything happen, even the end of the dock.
	const QPointer<KestruneDock> self(this);
	ElevatedStart start = startElevated(
		installerPath, QStringLiteral("/VERYSILENT /SUPPRESSMSGBOXES /NORESTART /NOCLOSEAPPLICATIONS /SP-"));
	if (!self)
		return;
	if (!start.process) {
		setUpdateState(QStringLiteral("error"), installerStartFailedText(start.error));
		return;
	}
	installer_ = std::move(start.process);
	installerTimer_->start();
}

void KestruneDock::pollInstaller()
{
	if (!installer_) {
		installerTimer_->stop();
		return;
	}

	if (const std::optional<int> exitCode = installer_->exitCode()) {
		installer_.reset();
		installerTimer_->stop();
		installerFinished(*exitCode);
	} else if (installerTookTooLong(installStarted_.elapsed())) {
		installerTimer_->stop();
		installer_.reset(); // the installer itself may still finish
		setUpdateState(QStringLiteral("error"), installerTimedOutText());
	}
}

void KestruneDock::startUpdateRunner(const QString &runner, const QString &installerPath)
{
	QProcess *process = hiddenProcess(this);
	connect(process, &QProcess::finished, this, [this, process](int exitCode, QProcess::ExitStatus exitStatus) {
		process->deleteLater();
		installerFinished(exitStatus == QProcess::CrashExit ? -1 : exitCode);
	});
	connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
		if (error != QProcess::FailedToStart)
			return;
		process->deleteLater();
		setUpdateState(QStringLiteral("error"), updateRunnerStartFailedText());
	});
	process->start(runner, {installerPath}, QIODevice::ReadWrite);
}

void KestruneDock::installerFinished(int exitCode)
{
	if (exitCode != 0) {
		setUpdateState(QStringLiteral("error"), installerFailedText(exitCode));
		return;
	}

	const QString installed = installedVersion();
	if (!installed.isEmpty() && installed == latestVersion_)
		setUpdateState(QStringLiteral("done"), installedText(latestVersion_));
	else
		setUpdateState(QStringLiteral("error"), stillInstalledText(installed));
}
