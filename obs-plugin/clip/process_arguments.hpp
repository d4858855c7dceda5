#pragma once

#include <QStringList>

struct ClipChoices;

/// The helper's arguments for making a Short of the saved replay at `replayPath`.
QStringList processArguments(const QString &replayPath, const ClipChoices &choices);
