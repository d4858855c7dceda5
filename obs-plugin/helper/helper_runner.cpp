#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>

#include "dock/kestrune_dock.hpp"
#include "helper/event_stream.hpp"
#include "helper/helper_locator.hpp"
#include "helper/helper_messages.hpp"
#include "helper/hidden_process.hpp"

#include <memory>

namespace {
struct HelperRun {
	EventStream stream{};
	/// Set by the first event: from then on the helper is trusted to report its own failures.
	bool spoke{false};
};
} // namespace

QProcess *KestruneDock::runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish)
{
	const QString path = locateHelper();
	if (!QFileInfo::exists(path)) {
		setStatus(helperMissingText(), true);
		return nullptr;
	}

	const QPointer<QProcess> process = hiddenProcess(this);
	const auto run = std::make_shared<HelperRun>();

	// A callback may open a window or a browser and so let anything happen, even the end of the dock.
	const auto deliver = [this, run, process, onEvent = std::move(onEvent)] {
		while (process) {
			const std::optional<QJsonObject> event = run->stream.next();
			if (!event)
				return;
			run->spoke = true;
			if (onEvent)
				onEvent(*event);
			// One read may hold a thousand events: a press of the hotkey does not wait for them all.
			if (process)
				QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
		}
	};

	connect(process, &QProcess::errorOccurred, this, [this, run](QProcess::ProcessError error) {
		if (error == QProcess::FailedToStart && !run->spoke)
			setStatus(helperStartFailedText(), true);
	});

	connect(process, &QProcess::readyReadStandardOutput, this, [run, process, deliver] {
		run->stream.append(process->readAllStandardOutput());
		deliver();
	});

	connect(process, &QProcess::finished, this,
		[this, run, process, deliver, onFinish = std::move(onFinish)](int exitCode,
									      QProcess::ExitStatus exitStatus) {
			// The run may end while the callback of one of its events waits in a window: the others come
			// before the end all the same.
			deliver();
			if (!process)
				return;
			if (!run->spoke && (exitCode != 0 || exitStatus == QProcess::CrashExit))
				setStatus(helperStoppedText(exitCode), true);
			if (onFinish)
				onFinish(exitCode);
			if (process)
				process->deleteLater();
		});

	// Nobody reads it, and a helper that chatters there for hours shall not fill OBS's memory.
	process->setStandardErrorFile(QProcess::nullDevice());
	process->start(path, arguments, QIODevice::ReadWrite);
	return process;
}

void KestruneDock::silenceRuns()
{
	// Child processes are destroyed, and with that killed, only after this object's own part is gone, but before
	// QObject cuts its connections: without this, "finished" would reach handlers of a half-destroyed dock.
	for (const QProcess *process : findChildren<QProcess *>(Qt::FindDirectChildrenOnly))
		process->disconnect();
}
