#pragma once

#include <QString>

// What the user reads when a helper run itself goes wrong.

/// The helper program is not there.
QString helperMissingText();

/// The operating system would not start the helper program.
QString helperStartFailedText();

/// The helper ended with `exitCode` without having said anything.
QString helperStoppedText(int exitCode);
