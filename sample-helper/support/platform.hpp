#pragma once

#include <QList>
#include <QString>

#include <system_error>

class QFile;

/// System calls that Qt lacks; one source file per system.
namespace platform {
/// Locks an open file for this process without waiting; `operation_would_block` means that another process holds the
/// lock. The system releases it when the file is closed or the process ends, even if killed, and not before: a
/// suspended process keeps it.
std::error_code tryLock(QFile &file);

/// Waits until the disk has everything that was written to an open file.
std::error_code flushToDisk(QFile &file);

/// The error numbers that mean "no room on the disk".
QList<int> diskFullErrors();

/// A name for this folder that can be a program's working folder (Windows limits its length).
QString asWorkingFolder(const QString &folder);
} // namespace platform
