#pragma once

#include <QStringList>

/// Runs the one command that the arguments (the program's name first) ask for; the exit code. Throws Failure.
int runCommandLine(const QStringList &arguments);
