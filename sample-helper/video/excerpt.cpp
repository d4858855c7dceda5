#include <QFileInfo>

#include "support/events.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
using ffmpeg::Frame;

/// OBS stores a keyframe every 250 frames, or as often as the user says.
constexpr double maxKeyInterval_s = 30;
/// Formats such as MPEG-TS are not searched more exactly.
constexpr double searchMargin_s = 0.5;
/// Times in files are rounded: by far less than a frame, but by more than this.
constexpr double roundedBy_s = 0.001;

double lengthOf(const QList<Frame> &frames)
{
	const Frame &last = frames.last();
	return last.time_s + last.duration_s - frames.first().time_s;
}

/// The first of the last frames, which take `length_s` together.
qsizetype firstOfLast(const QList<Frame> &frames, double length_s)
{
	const Frame &last = frames.last();
	const double start_s = last.time_s + last.duration_s / 2 - length_s;
	const auto first = std::lower_bound(frames.begin(), frames.end(), start_s,
					    [](const Frame &frame, double time_s) { return frame.time_s < time_s; });
	return first - frames.begin();
}

/// The nearest keyframe in front of a frame, or that itself; -1 if there is none.
qsizetype keyframeOf(const QList<Frame> &frames, qsizetype index)
{
	while (index >= 0 && !frames[index].isKeyframe) {
		--index;
	}
	return index;
}

/// Total length of the gaps between frames.
double gapsOf(const QList<Frame> &frames)
{
	QList<double> steps{};
	for (qsizetype i = 1; i < frames.size(); ++i) {
		steps += frames[i].time_s - frames[i - 1].time_s;
	}
	std::sort(steps.begin(), steps.end());
	double gaps_s = 0;
	for (const double step_s : std::as_const(steps)) {
		const double gap_s = step_s - steps[steps.size() / 2];
		gaps_s += gap_s > noticeable_s ? gap_s : 0;
	}
	return gaps_s;
}

/// The frames of the replay, where possible only those at its end: a recording of hours takes a while to read.
QList<Frame> framesAtTheEnd(const QString &replay, const ffmpeg::Video &video, int length_s)
{
	const double from_s = video.duration_s - length_s - maxKeyInterval_s;
	if (from_s > video.start_s) {
		const QList<Frame> frames = ffmpeg::frames(replay, video.videoStream, from_s);
		if (!frames.isEmpty() && lengthOf(frames) > length_s &&
		    keyframeOf(frames, firstOfLast(frames, length_s)) >= 0) {
			return frames;
		}
	}
	return ffmpeg::frames(replay, video.videoStream);
}

/// In milliseconds or better, whatever the size of the number.
QString number(double seconds)
{
	return QString::number(seconds, 'f', 6);
}
} // namespace

Excerpt lastSecondsOf(const QString &replay, int length_s)
{
	const std::optional<ffmpeg::Video> video = ffmpeg::lookInto(replay);
	if (!video) {
		throw Failure(u"%1 isn't a video that ffmpeg can read."_s.arg(QFileInfo(replay).fileName()));
	}
	const QList<Frame> frames = framesAtTheEnd(replay, *video, length_s);
	if (frames.isEmpty()) {
		return {replay, *video, 0, static_cast<double>(length_s), 0, 0, std::nullopt};
	}
	const qsizetype first = firstOfLast(frames, length_s);
	const QList<Frame> chosen = frames.sliced(first);
	Excerpt excerpt{replay,           *video,        chosen.first().time_s - video->start_s,
			lengthOf(chosen), chosen.size(), gapsOf(chosen),
			std::nullopt};
	const qsizetype key = keyframeOf(frames, first);
	if (key >= 0 && frames[key].decode_s - searchMargin_s > video->start_s) {
		excerpt.readFrom_s = frames[key].decode_s - searchMargin_s;
	}
	return excerpt;
}

QStringList inputArguments(const Excerpt &excerpt)
{
	// ffmpeg would take the time that reading begins at as 0, and a frame long before 0 in MPEG-TS as a jump in
	// time, which it mends.
	QStringList arguments{u"-copyts"_s,    u"-seek_timestamp"_s,
			      u"1"_s,          u"-noaccurate_seek"_s,
			      u"-itsoffset"_s, number(-excerpt.video.start_s - excerpt.start_s)};
	if (excerpt.readFrom_s) {
		arguments << u"-ss"_s << number(*excerpt.readFrom_s);
	}
	return arguments << u"-i"_s << ffmpeg::fileAddress(excerpt.replay);
}

QString videoCut(const Excerpt &excerpt)
{
	return u"trim=start=%1:end=%2"_s.arg(number(-roundedBy_s), number(excerpt.length_s - roundedBy_s));
}

QString soundCut(const Excerpt &excerpt)
{
	return u"atrim=start=0:end=%1,aresample=async=1:first_pts=0"_s.arg(number(excerpt.length_s));
}
