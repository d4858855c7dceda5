#include "video/excerpt.hpp"

#include <algorithm>

Excerpt lastSecondsOf(const QString &replay, int seconds)
{
	const ffmpeg::Video video = ffmpeg::probe(replay);
	if (video.durationSeconds <= 0) {
		return {replay, video, 0, static_cast<double>(seconds)};
	}
	const double start = std::max(0.0, video.durationSeconds - seconds);
	return {replay, video, start, video.durationSeconds - start};
}

QStringList inputArguments(const Excerpt &excerpt)
{
	QStringList arguments{};
	// ffmpeg finds no place in a file without times, not even its beginning.
	if (excerpt.startSeconds > 0) {
		arguments << QStringLiteral("-ss") << QString::number(excerpt.startSeconds, 'f', 6);
	}
	arguments << QStringLiteral("-t") << QString::number(excerpt.lengthSeconds, 'f', 6) << QStringLiteral("-i")
		  << ffmpeg::fileAddress(excerpt.replay);
	return arguments;
}
