#pragma once

#include <QByteArray>
#include <QString>

class QFile;
class QFileDevice;

/// Files and folders. Failures are thrown as Failure and name the file, its folder and the cause, as in "couldn't save
/// chat.json in /home/ana/shorts: the disk is full."
namespace files {
/// The largest file that is read whole.
constexpr qint64 maxSmallFile_bytes = qint64{1024} * 1024;

/// Makes a folder and its missing parents.
void makeFolder(const QString &path);

/// Like makeFolder(), and keeps all other users out of the folder.
void makePrivateFolder(const QString &path);

/// Returns a file's content, cut off after maxSmallFile_bytes + 1: a result of that size means "too large".
QByteArray readSmall(const QString &path);

/// Writes all of `content` to a file opened Unbuffered. Returns the system's error text, empty on success.
QString writeAll(QFileDevice &file, const QByteArray &content);

/// Writes a new file.
void write(const QString &path, const QByteArray &content);

/// Replaces a whole file by writing and renaming "FILE.new": whatever happens, the old or the new content is there.
/// Only one run at a time may do this.
void replace(const QString &path, const QByteArray &content);

/// Renames a file within one disk and replaces an existing `to`.
void move(const QString &from, const QString &to);

/// Locks an open file for this process; waits for other processes to release it, up to `limit_ms`.
void lock(QFile &file, int limit_ms);

/// Turns a system's error text into the end of a sentence, without the full stop.
QString cause(const QString &systemText);
} // namespace files
