#pragma once

#include <QString>

#include <array>
#include <span>

class QComboBox;

/// One choice: the key that the helper and the preferences file use, and what the user reads. Both UTF-8.
struct Choice {
	const char *key;
	const char *displayName;
};

using ChoiceTable = std::span<const Choice>;

// The first entry of each table is its default.
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

/// The clip lengths on offer, and the one selected until the user chooses.
inline constexpr std::array clipLengths_s{30, 60, 90, 120};
inline constexpr int defaultClipLength_s = 60;

/// The caption style that means no captions.
inline constexpr const char *noCaptionsKey = "none";

/// The display name of `key` in `table`; the key itself when the table has no such row.
QString displayName(ChoiceTable table, const QString &key);

/// Replaces the box's entries by the table's, each with its key as user-role data, and selects the first.
void fillChoices(QComboBox *box, ChoiceTable table);

/// Replaces the box's entries by `keys`, named as in `table`, and selects `desiredKey`, or when that is empty the key
/// selected before; the first entry when that one is not offered. Without keys nothing changes.
void refillChoices(QComboBox *box, ChoiceTable table, const QStringList &keys, const QString &desiredKey);

/// Selects the entry with exactly this key; nothing changes when the key is empty or not there.
void selectByKey(QComboBox *box, const QString &key);

/// The current entry's key; empty when the box has no entry.
QString currentKey(const QComboBox *box);
