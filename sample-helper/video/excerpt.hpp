#pragma once

#include <QString>
#include <QStringList>

#include "video/ffmpeg.hpp"

/// The part of a replay that becomes a Short: its end.
struct Excerpt {
	QString replay{};
	ffmpeg::Video video{};
	double start_s{};
	double length_s{};
};

/// The last seconds of a replay, or all of it when it is shorter. Where nothing tells how long the replay is, its first
/// seconds: better than none. Throws Failure when it is no video.
Excerpt lastSecondsOf(const QString &replay, int length_s);

/// The arguments that make ffmpeg read the excerpt.
QStringList inputArguments(const Excerpt &excerpt);
