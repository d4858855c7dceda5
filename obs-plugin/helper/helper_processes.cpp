#include <QFileInfo>
#include <QPointer>
#include <QProcess>

#include "helper/event_stream.hpp"
#include "helper/helper_locator.hpp"
#include "helper/helper_processes.hpp"
#include "helper/helper_texts.hpp"
#include "helper/hidden_process.hpp"

#include <memory>

namespace {
/// One run, shared by its handlers.
struct HelperRun {
	/// Null once the runner and the dock are gone.
	QPointer<HelperProcesses> runner{};
	/// Null once the process object is gone: after its end, or with the dock.
	QPointer<QProcess> process{};
	EventStream stream{};
	/// Set by the first event: from then on the helper reports its own failures.
	bool spoke{false};
	HelperRunner::EventCallback onEvent{};
	HelperRunner::FinishCallback onFinish{};
	std::function<void(const QString &text)> onFailure{};

	void onErrorOccurred(QProcess::ProcessError error) const
	{
		if (error == QProcess::FailedToStart && !spoke) {
			onFailure(helperStartFailedText());
		}
	}

	bool isOver() const { return !runner || !process; }

	void onReadyRead()
	{
		if (isOver()) {
			return;
		}
		stream.append(process->readAllStandardOutput());
		deliverEvents();
	}

	/// A callback may run an event loop, which may destroy the dock.
	void deliverEvents()
	{
		while (!isOver()) {
			const std::optional<QJsonObject> event = stream.next();
			if (!event) {
				return;
			}
			spoke = true;
			if (onEvent) {
				onEvent(*event);
			}
		}
	}

	void onFinished(int exitCode, QProcess::ExitStatus exitStatus)
	{
		// The process may end while an event's callback runs an event loop: deliver the other events first.
		deliverEvents();
		if (isOver()) {
			return;
		}
		if (!spoke && (exitCode != 0 || exitStatus == QProcess::CrashExit)) {
			onFailure(helperStoppedText(exitCode));
		}
		if (onFinish) {
			onFinish(exitCode);
		}
		if (process) {
			process->deleteLater();
		}
	}
};
} // namespace

HelperProcesses::HelperProcesses(QObject *dock, std::function<void(const QString &text)> onFailure)
	: dock_(dock)
	, onFailure_(std::move(onFailure))
{
}

bool HelperProcesses::isInstalled() const
{
	return QFileInfo::exists(locateHelper());
}

bool HelperProcesses::runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish)
{
	const QString path = locateHelper();
	if (!QFileInfo::exists(path)) {
		onFailure_(helperMissingText());
		return false;
	}

	QProcess *process = hiddenProcess(dock_);
	const auto run = std::make_shared<HelperRun>();
	run->runner = this;
	run->process = process;
	run->onEvent = std::move(onEvent);
	run->onFinish = std::move(onFinish);
	run->onFailure = onFailure_;

	// The runner is the context, and is destroyed before the dock's children, so nobody hears of processes killed
	// with the dock. Output and end are queued: QProcess is not done when it emits them, and a callback's event
	// loop may delete it.
	connect(process, &QProcess::errorOccurred, this,
		[run](QProcess::ProcessError error) { run->onErrorOccurred(error); });
	connect(process, &QProcess::readyReadStandardOutput, this, [run] { run->onReadyRead(); }, Qt::QueuedConnection);
	connect(
		process, &QProcess::finished, this,
		[run](int exitCode, QProcess::ExitStatus exitStatus) { run->onFinished(exitCode, exitStatus); },
		Qt::QueuedConnection);

	// Nobody reads it, and hours of chatter must not fill OBS's memory.
	process->setStandardErrorFile(QProcess::nullDevice());
	process->start(path, arguments, QIODevice::ReadWrite);
	return true;
}
