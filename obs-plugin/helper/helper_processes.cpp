#include <QDeadlineTimer>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>

#include "helper/event_stream.hpp"
#include "helper/helper_locator.hpp"
#include "helper/helper_processes.hpp"
#include "helper/helper_texts.hpp"
#include "helper/hidden_process.hpp"
#include "module/log.hpp"

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

using namespace std::chrono_literals;

namespace {
/// How long one run's output may hold the user interface: half a frame at 60 fps, so that an event's callback of the
/// same length still fits.
constexpr auto maxTurn = 8ms;
constexpr qint64 pieceSize_bytes = 65536;
/// How much may wait to be read. A full pipe makes a helper wait, but Qt for Windows empties the pipe at once and keeps
/// whatever comes in OBS's memory.
constexpr qint64 maxUnread_bytes = qint64{32} * 1024 * 1024;

/// One run, shared by its handlers.
struct HelperRun : std::enable_shared_from_this<HelperRun> {
	/// Null once the runner and the dock are gone.
	QPointer<HelperProcesses> runner{};
	/// Null once the process object is gone: after its end, or with the dock.
	QPointer<QProcess> process{};
	EventStream stream{};
	/// Set by the first event: from then on the helper reports its own failures.
	bool spoke{false};
	/// Set while a turn is queued.
	bool scheduled{false};
	/// Set by the end of the process; output of it may be left.
	bool ended{false};
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

	/// Queues a turn: QProcess is not done when it announces output or end, and a callback's event loop may delete
	/// it.
	void schedule()
	{
		if (!scheduled && runner) {
			scheduled = true;
			QMetaObject::invokeMethod(
				runner, [run = shared_from_this()] { run->takeTurn(); }, Qt::QueuedConnection);
		}
	}

	/// Delivers the available output, and then the end, for about maxTurn.
	void takeTurn()
	{
		scheduled = false;
		stopFlood();
		const QDeadlineTimer deadline(maxTurn);
		while (!isOver() && (deliverEvent() || readPiece())) {
			if (deadline.hasExpired()) {
				schedule();
				return;
			}
		}
		if (!isOver() && std::exchange(ended, false)) {
			finish(process->exitCode());
		}
	}

	void stopFlood() const
	{
		if (process && process->bytesAvailable() > maxUnread_bytes) {
			moduleLog(LOG_WARNING, "ended a helper run that wrote faster than it can be read");
			process->kill();
			process->skip(process->bytesAvailable());
		}
	}

	bool readPiece()
	{
		const QByteArray piece = process->read(pieceSize_bytes);
		stream.append(piece);
		return !piece.isEmpty();
	}

	/// A callback may run an event loop, which may destroy the dock.
	bool deliverEvent()
	{
		const std::optional<QJsonObject> event = stream.next();
		if (!event) {
			return false;
		}
		spoke = true;
		if (onEvent) {
			onEvent(*event);
		}
		return true;
	}

	void finish(int exitCode)
	{
		if (!spoke && (exitCode != 0 || process->exitStatus() == QProcess::CrashExit)) {
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

	// The process is a child of the dock: Qt kills it with the dock, when OBS exits. The runner is the connections'
	// context and is destroyed before that, so no handler runs for processes that are killed with the dock.
	connect(process, &QProcess::errorOccurred, this,
		[run](QProcess::ProcessError error) { run->onErrorOccurred(error); });
	connect(process, &QProcess::readyReadStandardOutput, this, [run] { run->schedule(); });
	connect(process, &QProcess::finished, this, [run] {
		run->ended = true;
		run->schedule();
	});

	// Nobody reads it, and hours of chatter must not fill OBS's memory.
	process->setStandardErrorFile(QProcess::nullDevice());
	process->start(path, arguments, QIODevice::ReadWrite);
	return true;
}
