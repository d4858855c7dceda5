#pragma once

class QObject;

// The one pointer to the dock, and how code outside the dock reaches it. OBS destroys the dock before it unloads the
// module, and remote requests come in on threads of their own, as hotkeys do where nobody reroutes them. So the pointer
// is only ever used under a lock by them: a slot call is either queued to a living dock or dropped.

/// The dock, or null before load, after a refused dock, after its destruction and after unload. User-interface thread
/// only, where the dock cannot go away in between.
QObject *currentDock();

/// Whether there is a dock. Any thread; the answer may be out of date at once.
bool dockExists();

/// Makes `newDock` (may be null) the current dock. User-interface thread.
void setCurrentDock(QObject *newDock);

/// Forgets the dock if it is `destroyed`; called by a dock that is on its way out. User-interface thread.
void forgetDock(const QObject *destroyed);

/// Queues a call of the dock's slot `name` (no arguments) on the dock's thread; does nothing without a dock. Answers
/// whether there was a dock to queue it to. Any thread.
bool invokeDockSlot(const char *name);
