#pragma once

class QObject;

// The one pointer to the dock. OBS destroys the dock before it unloads the module, while hotkeys and remote requests
// come from other threads. They use the pointer under a lock only: a slot call is queued to a living dock or dropped.

/// The dock, or null when there is none. User-interface thread only: elsewhere it could be destroyed in between.
QObject *currentDock();

/// Whether there is a dock. Any thread; the answer may be outdated at once.
bool dockExists();

/// Sets the current dock; null for none. User-interface thread.
void setCurrentDock(QObject *newDock);

/// Forgets the dock if it is `destroyed`. Dock destructors call it. User-interface thread.
void forgetDock(const QObject *destroyed);

/// Queues a call of the dock's slot `name` (without arguments) on the user-interface thread. False without a dock. Any
/// thread.
bool invokeDockSlot(const char *name);
