#include <QMetaObject>
#include <QMutex>
#include <QObject>

#include "module/dock_access.hpp"

namespace {
// Not a std::mutex: one that a new MSVC toolset has compiled crashes with the runtime library of an older one.
QMutex dockMutex;
QObject *dock = nullptr;
} // namespace

QObject *currentDock()
{
	const QMutexLocker lock(&dockMutex);
	return dock;
}

bool dockExists()
{
	return currentDock() != nullptr;
}

void setCurrentDock(QObject *newDock)
{
	const QMutexLocker lock(&dockMutex);
	dock = newDock;
}

void forgetDock(const QObject *destroyed)
{
	const QMutexLocker lock(&dockMutex);
	if (dock == destroyed) {
		dock = nullptr;
	}
}

bool invokeDockSlot(const char *name)
{
	// A queued call only posts an event, so nothing of the dock runs while the lock is held.
	const QMutexLocker lock(&dockMutex);
	if (!dock) {
		return false;
	}

	[[maybe_unused]] const bool queued = QMetaObject::invokeMethod(dock, name, Qt::QueuedConnection);
	Q_ASSERT_X(queued, name, "the dock has no such slot");
	return true;
}
