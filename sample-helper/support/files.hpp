#pragma once

#include <QByteArray>
#include <QString>

class QFile;
class QFileDevice;

/// Files and folders. What goes wrong is thrown as Failure, which names the file, its folder and the cause, for example
/// "couldn't save chat.json in /home/ana/shorts: the disk is full."
namespace files {

/// No file that this program reads whole is larger.
constexpr qint64 largestSmallFile_bytes = 1024 * 1024;

/// Makes a folder with its parents if it is missing.
void makeFolder(const QString &path);

/// Does the same, and leaves nobody but the user the right to look into it or write there.
void makePrivateFolder(const QString &path);

/// The content of a file; at most one byte more than largestSmallFile_bytes, which tells that it is too large.
QByteArray readSmall(const QString &path);

/// Writes all of it to a file that was opened Unbuffered; answers why not, in the system's words, or nothing.
QString writeAll(QFileDevice &file, const QByteArray &content);

/// Writes a new file.
void write(const QString &path, const QByteArray &content);

/// Replaces a file whole, by way of a file of the same name with ".new" behind it: whatever happens, the old or the new
/// content is there. Only one run at a time may do so.
void replace(const QString &path, const QByteArray &content);

/// Gives a file another name on the same disk; one that has that name is replaced.
void move(const QString &from, const QString &to);

/// Locks an open file for this process alone, and waits so long for others to give it free.
void lock(QFile &file, int limit_ms);

/// The cause in the system's words, as the end of a sentence and without its full stop.
QString cause(const QString &systemText);

} // namespace files
