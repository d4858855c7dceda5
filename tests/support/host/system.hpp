#pragma once

#include <QString>

/// Sets an environment variable of this process; on Windows, qputenv supports only the code page's characters.
void setEnvironment(const char *name, const QString &value);

/// Whether the process runs, or has ended and was not waited for.
bool isAlive(qint64 processId);
