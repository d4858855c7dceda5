#pragma once

#include <QString>
#include <QStringList>

#include "video/probe.hpp"

#include <optional>

/// The part of a replay that becomes a Short: its end.
struct Excerpt {
	QString replay{};
	ffmpeg::Video video{};
	/// The time of its first frame, from the beginning of the replay.
	double start_s{0};
	double length_s{0};
	/// How many frames it has; 0 when unknown.
	qsizetype frames{0};
	/// Total length of the gaps, where frames are missing.
	double gaps_s{0};
	/// Where reading must begin, in the file's own time, so that all of its frames can be decoded; nothing: at the
	/// file's beginning.
	std::optional<double> readFrom_s{};
};

/// Shorter gaps go unnoticed.
inline constexpr double noticeable_s = 0.25;

/// The last seconds of a replay, or all of it when it is shorter: from one frame to the end of another. Where nothing
/// tells how long the replay is, its first seconds: better than none. Throws Failure when it is no video.
Excerpt lastSecondsOf(const QString &replay, int length_s);

/// The arguments that make ffmpeg read the excerpt, with times that are 0 at its start. What is read is a bit more: see
/// videoCut() and soundCut().
QStringList inputArguments(const Excerpt &excerpt);

/// The filter that leaves exactly the excerpt of the frames.
QString videoCut(const Excerpt &excerpt);

/// The filters that leave exactly the excerpt of the sound, with silence where some is missing.
QString soundCut(const Excerpt &excerpt);
