#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A piece of text and when it is shown, from the start of the video.
struct Cue {
	qint64 start_ms{0};
	qint64 end_ms{0};
	/// Plain text, several lines separated by '\n'.
	QString text{};

	bool operator==(const Cue &) const = default;
};

/// The cues of a SubRip (.srt) or WebVTT (.vtt) file in the order of their start. Markup is taken out, what is no cue
/// is skipped: comments, styles, broken times, cues that end before they start, cues without text. Lines may end in any
/// way, the text may be UTF-8, UTF-16 with a mark, or Latin-1.
QList<Cue> parseSubtitles(const QByteArray &file);

/// Whether these bytes can be a text file at all.
bool isText(const QByteArray &file);

/// The cues of a part of the video, with times from its beginning. At most one is left at any moment: a cue ends when
/// the next one starts, and cues that start together become one.
QList<Cue> cuesWithin(const QList<Cue> &cues, qint64 start_ms, qint64 end_ms);
