#include "dock/kestrune_dock.hpp"
#include "module/dock_access.hpp"

#include <mutex>

namespace {
std::mutex dockMutex;
KestruneDock *dock = nullptr;
} // namespace

KestruneDock *currentDock()
{
	const std::lock_guard lock(dockMutex);
	return dock;
}

bool dockExists()
{
	return currentDock() != nullptr;
}

void setCurrentDock(KestruneDock *newDock)
{
	const std::lock_guard lock(dockMutex);
	dock = newDock;
}

void forgetDock(const KestruneDock *destroyed)
{
	const std::lock_guard lock(dockMutex);
	if (dock == destroyed)
		dock = nullptr;
}

bool invokeDockSlot(const char *name)
{
	// A queued call only posts an event, so nothing of the dock runs while the lock is held.
	const std::lock_guard lock(dockMutex);
	if (!dock)
		return false;

	QMetaObject::invokeMethod(dock, name, Qt::QueuedConnection);
	return true;
}
