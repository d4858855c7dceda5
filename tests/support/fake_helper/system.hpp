#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// What the one who started this program said about its windows; empty where programs are not told.
QJsonObject windowState();

/// Adds bytes at the end of a file, as one piece even when other programs do the same; ends the program if it cannot.
void append(const QString &path, const QByteArray &bytes);

/// Makes the standard streams write what they are given, newlines included.
void writeBytesUnchanged();

/// Ends the program as a crash does, but leaves nothing behind: no core file, no report, no message.
[[noreturn]] void crash();
