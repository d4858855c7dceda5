#include <QFileInfo>

#include "support/events.hpp"
#include "video/completeness.hpp"
#include "video/encoding.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"

using namespace Qt::StringLiterals;

namespace {
using ffmpeg::Frame;

double endOf(const QList<Frame> &frames)
{
	return frames.isEmpty() ? 0 : frames.last().time_s + frames.last().duration_s;
}

/// How long the picture stands still in a Short of this length, in all: where the replay has none, and where some could
/// not be decoded.
double standstill_s(const Excerpt &excerpt, const Reading &reading, double length_s)
{
	if (excerpt.frames == 0 || reading.frames == 0) {
		return 0;
	}
	const double each_s = (excerpt.length_s - excerpt.gaps_s) / static_cast<double>(excerpt.frames);
	const double unread_s = static_cast<double>(excerpt.frames - reading.frames) * each_s;
	return excerpt.gaps_s + unread_s - (excerpt.length_s - length_s);
}

QString oneDecimal(double number)
{
	return QString::number(number, 'f', 1);
}
} // namespace

bool isPlayable(const QString &file, const Excerpt &excerpt)
{
	const std::optional<ffmpeg::Video> video = ffmpeg::lookInto(file);
	if (!video || endOf(ffmpeg::frames(file, video->videoStream)) < excerpt.length_s - noticeable_s) {
		return false;
	}
	try {
		// Keyframes alone: they show as well whether what was written is video.
		ffmpeg::run({u"-xerror"_s, u"-skip_frame"_s, u"nokey"_s, u"-i"_s, ffmpeg::fileAddress(file), u"-map"_s,
			     u"0:v"_s, u"-f"_s, u"null"_s, u"-"_s},
			    {});
		return true;
	} catch (const Failure &) {
		return false;
	}
}

void noteWhatIsMissing(const QString &file, const Excerpt &excerpt, const Reading &reading, int asked_s,
		       QStringList &notes)
{
	const std::optional<ffmpeg::Video> video = ffmpeg::lookInto(file);
	const double length_s = video ? endOf(ffmpeg::frames(file, video->videoStream)) : 0;
	if (!video || length_s <= 0) {
		throw Failure(u"ffmpeg found no frames in %1."_s.arg(QFileInfo(excerpt.replay).fileName()));
	}
	const bool hasRest = length_s > excerpt.length_s - noticeable_s;
	if (length_s < asked_s - noticeable_s) {
		notes += u"%1 s instead of %2 s, %3"_s.arg(oneDecimal(length_s))
				 .arg(asked_s)
				 .arg(hasRest ? u"the replay has no more"_s
					      : u"the rest of the replay couldn't be read"_s);
	}
	const double still_s = standstill_s(excerpt, reading, length_s);
	if (still_s > noticeable_s) {
		notes += u"its picture stands still for %1 s, the replay is damaged"_s.arg(oneDecimal(still_s));
	}
	if (hasRest && excerpt.video.audioStream >= 0 && video->audioDuration_s < length_s - noticeable_s) {
		notes += u"its sound ends after %1 s"_s.arg(oneDecimal(video->audioDuration_s));
	}
	if (hasRest && still_s <= noticeable_s && reading.isDoubtful) {
		notes += u"parts of it may be garbled, the replay is damaged"_s;
	}
}
