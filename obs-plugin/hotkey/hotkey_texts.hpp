#pragma once

#include <QStringList>

// What the user reads about the clip hotkey. `conflicts` are the descriptions of other hotkeys on the same keys.

/// The status line after `combinationText` was bound.
QString hotkeySetText(const QString &combinationText, const QStringList &conflicts);

/// The default-hotkey button's text and tooltip, given the conflicts of the default combination.
QString defaultHotkeyText(const QStringList &conflicts);
QString defaultHotkeyToolTip(const QStringList &conflicts);
