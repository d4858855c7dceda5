#pragma once

#include <QString>

#include <array>
#include <span>

class QComboBox;

/// A choice: its key for the helper and the preferences file, and its name for the user. Both UTF-8.
struct Choice {
	const char *key;
	const char *displayName;
};

using ChoiceTable = std::span<const Choice>;

// The first entry is the default.
inline constexpr std::array<Choice, 5> layoutTable{{
	{"vtuber-bubble", "Bubble"},
	{"vtuber", "Face panel"},
	{"facecam", "Facecam"},
	{"podcast", "Podcast"},
	{"gameplay", "Gameplay only"},
}};
inline constexpr std::array<Choice, 5> styleTable{{
	{"rune", "Rune"},
	{"neon", "Neon"},
	{"clean", "Clean"},
	{"meme", "Bold Meme"},
	{"none", "None"},
}};
inline constexpr std::array<Choice, 4> fontTable{{
	{"bebas", "Bebas Neue"},
	{"montserrat", "Montserrat"},
	{"inter", "Inter"},
	{"bangers", "Bangers"},
}};
inline constexpr std::array<Choice, 4> positionTable{{
	{"auto", "Auto"},
	{"top", "Top"},
	{"middle", "Middle"},
	{"bottom", "Bottom"},
}};

inline constexpr std::array clipLengths_s{30, 60, 90, 120};
inline constexpr int defaultClipLength_s = 60;

inline constexpr const char *noCaptionsKey = "none";

/// The display name of `key`; the key itself if the table lacks it.
QString displayName(ChoiceTable table, const QString &key);

/// Replaces the entries with the table's, each with its key as user-role data, and selects the first.
void fillChoices(QComboBox *box, ChoiceTable table);

/// Replaces the entries with `keys`, named as in `table`. Selects `desiredKey` or, if that is empty, the key selected
/// before; the first entry if that one is gone. Changes nothing without keys.
void refillChoices(QComboBox *box, ChoiceTable table, const QStringList &keys, const QString &desiredKey);

/// Selects the entry with this key; changes nothing if the key is empty or missing.
void selectByKey(QComboBox *box, const QString &key);

/// The selected key; empty if the box has no entries.
QString currentKey(const QComboBox *box);
