#pragma once

#include <QString>

/// The longest text from outside that a widget shows, in UTF-16 code units.
inline constexpr qsizetype longestShownText = 4000;

/// `text` as a widget may be given it: whole, or its beginning and "…" when it is longer than longestShownText. Qt lays
/// a text out as a whole whenever a widget changes: one of a megabyte keeps the user-interface thread busy for a
/// minute.
QString shownText(const QString &text);
