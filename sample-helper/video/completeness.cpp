#include <QFileInfo>

#include "support/events.hpp"
#include "video/completeness.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using ffmpeg::Picture;

/// Nobody misses less than that.
constexpr double noticeable_s = 0.25;

double endOf(const QList<Picture> &pictures)
{
	return pictures.isEmpty() ? 0 : pictures.last().time_s + pictures.last().duration_s;
}

/// How long in all nothing new is seen where pictures should follow one another. There must be some.
double standstill_s(const QList<Picture> &pictures)
{
	// The first picture should be there at 0.
	QList<double> gaps{pictures.first().time_s};
	for (qsizetype i = 1; i < pictures.size(); ++i) {
		gaps += pictures[i].time_s - pictures[i - 1].time_s;
	}
	std::sort(gaps.begin(), gaps.end());
	const double usual_s = gaps[gaps.size() / 2];
	double sum_s = 0;
	for (const double gap_s : std::as_const(gaps)) {
		const double missing_s = gap_s - usual_s;
		sum_s += missing_s > noticeable_s ? missing_s : 0;
	}
	return sum_s;
}

QString oneDecimal(double number)
{
	return QString::number(number, 'f', 1);
}

} // namespace

bool isPlayable(const QString &file, const Excerpt &excerpt)
{
	const std::optional<ffmpeg::Video> video = ffmpeg::lookInto(file);
	if (!video || endOf(ffmpeg::pictures(file, video->videoStream)) < excerpt.length_s - noticeable_s) {
		return false;
	}
	// Key pictures alone: they show as well whether what was written is video.
	return ffmpeg::tryToRun({u"-xerror"_s, u"-skip_frame"_s, u"nokey"_s, u"-i"_s, ffmpeg::fileAddress(file),
				 u"-map"_s, u"0:v"_s, u"-f"_s, u"null"_s, u"-"_s},
				{})
		.isEmpty();
}

void noteWhatIsMissing(const QString &file, const Excerpt &excerpt, int asked_s, QStringList &notes)
{
	const std::optional<ffmpeg::Video> video = ffmpeg::lookInto(file);
	const QList<Picture> pictures = video ? ffmpeg::pictures(file, video->videoStream) : QList<Picture>();
	const double length_s = endOf(pictures);
	if (length_s <= 0) {
		throw Failure(u"ffmpeg found no pictures in %1."_s.arg(QFileInfo(excerpt.replay).fileName()));
	}
	if (length_s < excerpt.length_s - noticeable_s) {
		notes += u"%1 s instead of %2 s, the rest of the replay couldn't be read"_s.arg(oneDecimal(length_s))
				 .arg(asked_s);
	} else if (length_s < asked_s - noticeable_s) {
		notes += u"%1 s instead of %2 s, the replay has no more"_s.arg(oneDecimal(length_s)).arg(asked_s);
	}
	const double still_s = standstill_s(pictures);
	if (still_s > 0) {
		notes += u"its picture stands still for %1 s, the replay is damaged"_s.arg(oneDecimal(still_s));
	}
	if (excerpt.video.audioStream >= 0 && video->audioDuration_s < length_s - noticeable_s) {
		notes += u"its sound ends after %1 s"_s.arg(oneDecimal(video->audioDuration_s));
	}
}
