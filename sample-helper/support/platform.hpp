#pragma once

#include <QList>

#include <system_error>

class QFile;

/// What Qt has no word for: one source per system.
namespace platform {

/// Locks an open file for this process alone, without waiting; `operation_would_block` when another process holds it.
/// The system gives the lock back when the file is closed or the process ends, however that happens, and not before: a
/// process that is suspended keeps it.
std::error_code tryLock(QFile &file);

/// Waits until the disk has what was written to an open file.
std::error_code flushToDisk(QFile &file);

/// The numbers of the errors that mean that there is no room.
QList<int> diskFullErrors();

} // namespace platform
