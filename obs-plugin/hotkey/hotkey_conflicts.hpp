#pragma once

#include <QStringList>

struct obs_key_combination;

/// Descriptions of the other OBS hotkeys bound to exactly `combination`, in OBS's order, duplicates kept: OBS fires
/// them all. Any thread.
QStringList hotkeyConflicts(const obs_key_combination &combination);

/// The status line after `combinationText` was bound; `conflicts` are the other hotkeys on it, if any.
QString hotkeySetText(const QString &combinationText, const QStringList &conflicts);

/// The default-hotkey button's text and tool tip, given the other hotkeys on the default combination.
QString defaultHotkeyText(const QStringList &conflicts);
QString defaultHotkeyToolTip(const QStringList &conflicts);
