#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// How the caller wants this program's windows shown and which handles it passed on; empty where the system does not
/// tell.
QJsonObject startState();

/// Appends bytes in one piece, even while other programs append; exits on failure.
void append(const QString &path, const QByteArray &bytes);

/// Turns off newline conversion on the standard streams.
void writeBytesUnchanged();

/// Crashes without core file, report or message.
[[noreturn]] void crash();
