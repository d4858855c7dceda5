#include <QFileInfo>

#include "support/events.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using ffmpeg::Picture;

/// OBS stores a key picture every 250 pictures, or as often as the user says.
constexpr double longestWayBackToKey_s = 30;
/// Formats such as MPEG-TS are not searched more exactly.
constexpr double searchMargin_s = 0.5;
/// The times in files are rounded: far less than a picture, more than that.
constexpr double roundedBy_s = 0.001;

double lengthOf(const QList<Picture> &pictures)
{
	const Picture &last = pictures.last();
	return last.time_s + last.duration_s - pictures.first().time_s;
}

/// The first of the last pictures, which take `length_s` together.
qsizetype firstOfLast(const QList<Picture> &pictures, double length_s)
{
	const Picture &last = pictures.last();
	const double start_s = last.time_s + last.duration_s / 2 - length_s;
	const auto first =
		std::lower_bound(pictures.begin(), pictures.end(), start_s,
				 [](const Picture &picture, double time_s) { return picture.time_s < time_s; });
	return first - pictures.begin();
}

/// The nearest key picture in front of a picture, or that itself; -1 if there is none.
qsizetype keyOf(const QList<Picture> &pictures, qsizetype index)
{
	while (index >= 0 && !pictures[index].isKey) {
		--index;
	}
	return index;
}

/// How long in all no picture follows where some should.
double gapsOf(const QList<Picture> &pictures)
{
	QList<double> steps{};
	for (qsizetype i = 1; i < pictures.size(); ++i) {
		steps += pictures[i].time_s - pictures[i - 1].time_s;
	}
	std::sort(steps.begin(), steps.end());
	double gaps_s = 0;
	for (const double step_s : std::as_const(steps)) {
		const double gap_s = step_s - steps[steps.size() / 2];
		gaps_s += gap_s > noticeable_s ? gap_s : 0;
	}
	return gaps_s;
}

/// The pictures of the replay, where possible only those at its end: a recording of hours takes a while to read.
QList<Picture> picturesAtTheEnd(const QString &replay, const ffmpeg::Video &video, int length_s)
{
	const double from_s = video.duration_s - length_s - longestWayBackToKey_s;
	if (from_s > video.start_s) {
		const QList<Picture> pictures = ffmpeg::pictures(replay, video.videoStream, from_s);
		if (!pictures.isEmpty() && lengthOf(pictures) > length_s &&
		    keyOf(pictures, firstOfLast(pictures, length_s)) >= 0) {
			return pictures;
		}
	}
	return ffmpeg::pictures(replay, video.videoStream);
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
	const QList<Picture> pictures = picturesAtTheEnd(replay, *video, length_s);
	if (pictures.isEmpty()) {
		return {replay, *video, 0, static_cast<double>(length_s), 0, 0, std::nullopt};
	}
	const qsizetype first = firstOfLast(pictures, length_s);
	const QList<Picture> chosen = pictures.sliced(first);
	Excerpt excerpt{replay,           *video,        chosen.first().time_s - video->start_s,
			lengthOf(chosen), chosen.size(), gapsOf(chosen),
			std::nullopt};
	const qsizetype key = keyOf(pictures, first);
	if (key >= 0 && pictures[key].decode_s - searchMargin_s > video->start_s) {
		excerpt.readFrom_s = pictures[key].decode_s - searchMargin_s;
	}
	return excerpt;
}

QStringList inputArguments(const Excerpt &excerpt)
{
	// ffmpeg would take the time that reading begins at as 0, and a picture long before 0 in MPEG-TS as a jump in
	// time, which it mends.
	QStringList arguments{u"-copyts"_s,    u"-seek_timestamp"_s,
			      u"1"_s,          u"-noaccurate_seek"_s,
			      u"-itsoffset"_s, number(-excerpt.video.start_s - excerpt.start_s)};
	if (excerpt.readFrom_s) {
		arguments << u"-ss"_s << number(*excerpt.readFrom_s);
	}
	return arguments << u"-i"_s << ffmpeg::fileAddress(excerpt.replay);
}

QString pictureCut(const Excerpt &excerpt)
{
	return u"trim=start=%1:end=%2"_s.arg(number(-roundedBy_s), number(excerpt.length_s - roundedBy_s));
}

QString soundCut(const Excerpt &excerpt)
{
	return u"atrim=start=0:end=%1,aresample=async=1:first_pts=0"_s.arg(number(excerpt.length_s));
}
