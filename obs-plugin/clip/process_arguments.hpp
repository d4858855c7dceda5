#pragma once

#include <QStringList>

struct ClipChoices;

/// The helper's arguments to make a Short of the replay at `replayPath`.
QStringList processArguments(const QString &replayPath, const ClipChoices &choices);
