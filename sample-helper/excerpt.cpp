#include "excerpt.hpp"

#include <algorithm>

Excerpt lastSecondsOf(const QString &replay, int seconds)
{
	const ffmpeg::Video video = ffmpeg::probe(replay);
	const double start = std::max(0.0, video.durationSeconds - seconds);
	return {replay, video, start, video.durationSeconds - start};
}

QStringList inputArguments(const Excerpt &excerpt)
{
	return {QStringLiteral("-ss"), QString::number(excerpt.startSeconds, 'f', 6),
		QStringLiteral("-t"),  QString::number(excerpt.lengthSeconds, 'f', 6),
		QStringLiteral("-i"),  ffmpeg::fileAddress(excerpt.replay)};
}
