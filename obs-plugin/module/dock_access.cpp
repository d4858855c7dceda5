#include <QMetaObject>
#include <QMutex>
#include <QObject>

#include "module/dock_access.hpp"

namespace {
// Not std::mutex: compiled with a newer MSVC toolset, it crashes on an older runtime library.
QMutex dockMutex;
QObject *dockPointer = nullptr;
} // namespace

QObject *currentDock()
{
	const QMutexLocker lock(&dockMutex);
	return dockPointer;
}

bool dockExists()
{
	return currentDock() != nullptr;
}

void setCurrentDock(QObject *newDock)
{
	const QMutexLocker lock(&dockMutex);
	dockPointer = newDock;
}

void forgetDock(const QObject *destroyed)
{
	const QMutexLocker lock(&dockMutex);
	if (dockPointer == destroyed) {
		dockPointer = nullptr;
	}
}

bool invokeDockSlot(const char *name)
{
	// Queuing only posts an event, so no dock code runs under the lock.
	const QMutexLocker lock(&dockMutex);
	if (!dockPointer) {
		return false;
	}

	[[maybe_unused]] const bool queued = QMetaObject::invokeMethod(dockPointer, name, Qt::QueuedConnection);
	Q_ASSERT_X(queued, name, "the dock has no such slot");
	return true;
}
