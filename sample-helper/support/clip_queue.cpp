#include <QDir>
#include <QElapsedTimer>
#include <QThread>

#include "support/clip_queue.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/files.hpp"
#include "support/platform.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr unsigned long pollInterval_ms = 200;

QString queueFolder()
{
	return environment::stateFolder() + u"/queue"_s;
}

QString ticketPath(qint64 number)
{
	return queueFolder() + u"/%1.ticket"_s.arg(number, 12, 10, QChar(u'0'));
}

/// The numbers of all tickets that were drawn, those of killed runs included.
QList<qint64> drawnNumbers()
{
	QList<qint64> numbers{};
	for (const QString &name : QDir(queueFolder()).entryList({u"*.ticket"_s}, QDir::Files, QDir::Name)) {
		bool isNumber = false;
		const qint64 number = name.section(u'.', 0, 0).toLongLong(&isNumber);
		if (isNumber) {
			numbers += number;
		}
	}
	return numbers;
}

/// Whether the run that drew the ticket is alive; removes a dead run's ticket. Never ask about tickets after your own:
/// they may not be locked yet.
bool isAlive(qint64 number)
{
	QFile ticket(ticketPath(number));
	if (!ticket.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
		return false;
	}
	// The system takes the lock from a run that ends, killed or not; a run that is suspended keeps its place.
	if (platform::tryLock(ticket) == std::errc::operation_would_block) {
		return true;
	}
	ticket.remove();
	return false;
}

/// Draws the next number; null if that fails. Only one run at a time may draw, or two could have the same number.
std::unique_ptr<QFile> drawTicket(qint64 &number)
{
	constexpr int limit_ms = 10000;
	files::makeFolder(queueFolder());
	QFile door(queueFolder() + u"/door.lock"_s);
	if (!door.open(QIODevice::ReadWrite)) {
		return nullptr;
	}
	files::lock(door, limit_ms);
	const QList<qint64> drawn = drawnNumbers();
	number = drawn.isEmpty() ? 1 : drawn.last() + 1;
	auto ticket = std::make_unique<QFile>(ticketPath(number));
	if (!ticket->open(QIODevice::ReadWrite)) {
		return nullptr;
	}
	files::lock(*ticket, 0);
	return ticket;
}

int clipsBefore(qint64 number)
{
	int count = 0;
	for (const qint64 other : drawnNumbers()) {
		count += other < number && isAlive(other) ? 1 : 0;
	}
	return count;
}

/// Waits until fewer clips are left in front than may be made at once.
void waitForTurn(qint64 number)
{
	QElapsedTimer timer;
	timer.start();
	int told = 0;
	for (int before = clipsBefore(number); before >= environment::clipsAtOnce(); before = clipsBefore(number)) {
		if (timer.hasExpired(environment::queueLimit_ms())) {
			qWarning("waited for %lld s, not waiting any longer", timer.elapsed() / 1000);
			return;
		}
		if (before != told) {
			qInfo("waiting for %d %s that came first", before, before == 1 ? "clip" : "clips");
			told = before;
		}
		QThread::msleep(pollInterval_ms);
	}
	if (told > 0) {
		qInfo("its turn after %.1f s", static_cast<double>(timer.elapsed()) / 1000);
	}
}
} // namespace

ClipTurn::ClipTurn()
{
	qint64 number = 0;
	try {
		ticket_ = drawTicket(number);
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
	}
	if (ticket_ == nullptr) {
		qWarning("no place in the queue %s, going on at once", qUtf8Printable(queueFolder()));
		return;
	}
	waitForTurn(number);
}

ClipTurn::~ClipTurn()
{
	if (ticket_ != nullptr) {
		ticket_->remove();
	}
}
