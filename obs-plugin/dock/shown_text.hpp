#pragma once

#include <QString>

/// The longest text from outside that a widget shows, in UTF-16 code units.
inline constexpr qsizetype maxShownText = 4000;

/// `text` as a widget may be given it: whole, or its beginning and "…" when it is longer than maxShownText. Qt lays
/// a text out as a whole whenever a widget changes: one of a megabyte keeps the user-interface thread busy for a
/// minute.
QString shownText(const QString &text);

/// Whether Qt may read the markup in `text`: it has none, or only inline tags without attributes. Other tags can open
/// files, even on other computers, and nested tables can take minutes to lay out.
bool hasHarmlessMarkup(const QString &text);

/// `text` as a tooltip may be given it: cut like a shown text, or shorter when it would need a window of many
/// megabytes; with its markup escaped unless that is harmless.
QString shownToolTip(const QString &text);
