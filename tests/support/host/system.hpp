#pragma once

#include <QString>

/// Sets an environment variable of this process; qputenv knows only the letters of the system's own code page.
void setEnvironment(const char *name, const QString &value);

/// Whether a process with this id is running, or ended and not yet asked for its exit code.
bool isAlive(qint64 processId);
