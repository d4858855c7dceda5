#include "video/excerpt.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

Excerpt lastSecondsOf(const QString &replay, int length_s)
{
	const ffmpeg::Video video = ffmpeg::probe(replay);
	if (video.duration_s <= 0) {
		return {replay, video, 0, static_cast<double>(length_s)};
	}
	const double start_s = std::max(0.0, video.duration_s - length_s);
	return {replay, video, start_s, video.duration_s - start_s};
}

QStringList inputArguments(const Excerpt &excerpt)
{
	QStringList arguments{};
	// ffmpeg finds no place in a file without times, not even its beginning.
	if (excerpt.start_s > 0) {
		arguments << u"-ss"_s << QString::number(excerpt.start_s, 'f', 6);
	}
	arguments << u"-t"_s << QString::number(excerpt.length_s, 'f', 6) << u"-i"_s
		  << ffmpeg::fileAddress(excerpt.replay);
	return arguments;
}
