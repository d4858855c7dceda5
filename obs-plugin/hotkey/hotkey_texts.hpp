#pragma once

#include <QStringList>

// Texts about the clip hotkey. `conflicts` describes other hotkeys on the same keys.

/// For the status line after binding `combinationText`.
QString hotkeySetText(const QString &combinationText, const QStringList &conflicts);

/// For the default-hotkey button, given the conflicts of the default combination.
QString defaultHotkeyText(const QStringList &conflicts);
QString defaultHotkeyToolTip(const QStringList &conflicts);
