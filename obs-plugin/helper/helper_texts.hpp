#pragma once

#include <QString>

// Texts for failed helper runs.

QString helperMissingText();

QString helperStartFailedText();

/// The helper ended with `exitCode` and without any event.
QString helperStoppedText(int exitCode);
