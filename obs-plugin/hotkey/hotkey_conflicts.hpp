#pragma once

#include <QStringList>

struct obs_key_combination;

/// Descriptions of the other hotkeys bound to `combination`, in OBS's order, with duplicates: OBS fires them all. Any
/// thread.
QStringList hotkeyConflicts(const obs_key_combination &combination);
