#pragma once

#include <QStringList>

struct obs_key_combination;

/// Descriptions of the other OBS hotkeys bound to exactly `combination`, in OBS's order, duplicates kept: OBS fires
/// them all. Any thread.
QStringList hotkeyConflicts(const obs_key_combination &combination);
