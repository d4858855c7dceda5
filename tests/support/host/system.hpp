#pragma once

#include <QString>

/// Sets an environment variable of this process; on Windows, qputenv supports only the code page's characters.
void setEnvironment(const char *name, const QString &value);

/// Makes a pipe that nobody writes to: whoever reads from it waits for ever. Returns its name, which is `path` where
/// pipes are files.
QString newPipe(const QString &path);

/// Whether the process runs, or has ended and was not waited for.
bool isAlive(qint64 processId);

/// Works around defects of the tests' system (Wine) that users' systems do not have. Called before libobs starts.
void mendSystem();
