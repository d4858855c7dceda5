#include <QPointer>
#include <QProcess>
#include <QTimer>

#include "helper/hidden_process.hpp"
#include "update/elevated_process.hpp"
#include "update/installer.hpp"
#include "update/manifest.hpp"
#include "update/update_button.hpp"
#include "update/update_texts.hpp"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Installer::Installer(QObject *dock, UpdateButton &button)
	: dock_(dock)
	, button_(button)
	, timer_(new QTimer(dock))
{
	timer_->setInterval(500ms);
	connect(timer_, &QTimer::timeout, this, &Installer::pollInstaller);
}

Installer::~Installer() = default;

void Installer::runInstaller(const QString &installerPath)
{
	button_.setUpdateState(UpdateState::Installing, installingText(button_.latestVersion()));
	started_.start();

	const QString runner = qEnvironmentVariable("KESTRUNE_UPDATE_RUNNER");
	if (runner.isEmpty()) {
		startElevatedInstaller(installerPath);
	} else {
		startUpdateRunner(runner, installerPath);
	}
}

void Installer::startElevatedInstaller(const QString &installerPath)
{
	const QPointer<Installer> alive(this);
	ElevatedStart start =
		startElevated(installerPath, u"/VERYSILENT /SUPPRESSMSGBOXES /NORESTART /NOCLOSEAPPLICATIONS /SP-"_s);
	if (!alive) {
		return;
	}
	if (!start.process) {
		button_.setUpdateState(UpdateState::Error, installerStartFailedText(start.error));
		return;
	}
	process_ = std::move(start.process);
	timer_->start();
}

void Installer::pollInstaller()
{
	if (!process_) {
		timer_->stop();
		return;
	}

	if (const std::optional<int> exitCode = process_->exitCode()) {
		process_.reset();
		timer_->stop();
		installerFinished(*exitCode);
	} else if (installerTookTooLong(started_.elapsed())) {
		timer_->stop();
		process_.reset(); // the installer itself may still finish
		button_.setUpdateState(UpdateState::Error, installerTimedOutText());
	}
}

void Installer::startUpdateRunner(const QString &runner, const QString &installerPath)
{
	QProcess *process = hiddenProcess(dock_);
	connect(process, &QProcess::finished, this, [this, process](int exitCode, QProcess::ExitStatus exitStatus) {
		process->deleteLater();
		installerFinished(exitStatus == QProcess::CrashExit ? -1 : exitCode);
	});
	connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
		if (error == QProcess::FailedToStart) {
			process->deleteLater();
			button_.setUpdateState(UpdateState::Error, updateRunnerStartFailedText());
		}
	});
	process->start(runner, {installerPath}, QIODevice::ReadWrite);
}

void Installer::installerFinished(int exitCode)
{
	if (exitCode != 0) {
		button_.setUpdateState(UpdateState::Error, installerFailedText(exitCode));
		return;
	}

	const QString installed = installedVersion();
	if (!installed.isEmpty() && installed == button_.latestVersion()) {
		button_.setUpdateState(UpdateState::Done, installedText(installed));
	} else {
		button_.setUpdateState(UpdateState::Error, stillInstalledText(installed));
	}
}
