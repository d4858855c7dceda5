#pragma once

#include <QList>
#include <QString>

#include "captions/subtitles.hpp"

/// A spoken word and when it is heard, from the start of the clip.
struct Word {
	qint64 start_ms{0};
	qint64 end_ms{0};
	/// Without blanks. Languages that write none come as words as long as a sentence.
	QString text{};
};

/// Captions that can be read while they are shown, by the usual rules of subtitles for a picture as narrow as a Short.
namespace phrases {
/// Of captiontext::lineWidth each.
inline constexpr int maxLines = 2;

/// Five sixths of a second: anything shown for less flickers.
constexpr qint64 shortest_ms = 833;
constexpr qint64 longest_ms = 7000;
/// A phrase stays as long as it takes to read it at this speed, if the next one leaves the time.
inline constexpr int lettersPerSecond = 17;
/// Between two phrases (two frames at 25 fps), so that the eye sees that the text changes.
constexpr qint64 gap_ms = 80;
/// A longer silence shows no caption; a shorter one is filled up to the gap.
constexpr qint64 silence_ms = 500;

/// The words as captions for a clip of this length: one at a time, each of at most two lines. They end with a sentence,
/// at a pause or a comma, else where both halves are about equal.
QList<Cue> phrasesOf(const QList<Word> &words, qint64 length_ms);
} // namespace phrases
