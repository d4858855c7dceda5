#include <QDir>

#include "captions/caption_pictures.hpp"
#include "captions/captions.hpp"
#include "support/files.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// Twice as high as the longest captions, so that a font with wide letters has room, too.
constexpr int stripHeight_px = 960;

/// The cues re-timed to one second each, so that frame N of the drawing shows cue N; one more frame shows none.
QList<Cue> onePerSecond(const QList<Cue> &cues)
{
	QList<Cue> result{};
	for (const Cue &cue : cues) {
		const qint64 start_ms = result.size() * 1000;
		result += {start_ms, start_ms + 1000, cue.text};
	}
	return result;
}

/// A list for ffmpeg's "concat": pictures, which it counts from 1, and how long each is shown.
QByteArray schedule(const QList<Cue> &cues)
{
	QString text = u"ffconcat version 1.0\n"_s;
	const auto show = [&text](qsizetype picture, qint64 time_ms) {
		// Exact to the millisecond, not to a frame at 25 fps.
		text += u"file caption-%1.png\noption framerate 1000\nduration %2\n"_s.arg(picture).arg(
			static_cast<double>(time_ms) / 1000, 0, 'f', 3);
	};
	const qsizetype none = cues.size() + 1;
	qint64 now_ms = 0;
	for (qsizetype i = 0; i < cues.size(); ++i) {
		const Cue &cue = cues[i];
		if (cue.start_ms > now_ms) {
			show(none, cue.start_ms - now_ms);
		}
		show(i + 1, cue.end_ms - std::max(now_ms, cue.start_ms));
		now_ms = cue.end_ms;
	}
	// Longer than any Short: ffmpeg stops when the first of its inputs ends.
	show(none, qint64{24} * 3600 * 1000);
	show(none, 1000);
	return text.toUtf8();
}

/// The filter graph that draws the script, below this height. In pictures with transparency ffmpeg draws what is half
/// transparent too thin. So it draws on black and on white: the less they differ, the more opaque; and what is on black
/// is the colour times the opacity.
QString drawing(int top_px)
{
	const QString on = u"color=c=%1:s=%2x%3:r=1,format=yuv444p,ass=captions.ass,crop=%2:%4:0:%5,format=gbrp"_s;
	const auto drawnOn = [&](const QString &colour) {
		return on.arg(colour).arg(shortWidth_px).arg(shortHeight_px).arg(stripHeight_px).arg(top_px);
	};
	return drawnOn(u"black"_s) + u",split[black][product];"_s + drawnOn(u"white"_s) +
	       u"[white];[white][black]blend=all_mode=difference,negate,split[opacity][divisor];"
	       "[product][divisor]blend=all_mode=divide[colour];[opacity]extractplanes=g[alpha];"
	       "[colour][alpha]alphamerge,format=rgba[captions]"_s;
}
} // namespace

CaptionPictures drawCaptions(const Look &look, const QList<Cue> &cues, const QString &folder)
{
	const QDir files(folder);
	files::write(files.filePath(u"captions.ass"_s), captionScript(look, onePerSecond(cues)));
	files::write(files.filePath(u"captions.ffconcat"_s), schedule(cues));
	const int top_px = std::clamp(captionMiddle_px(look) - stripHeight_px / 2, 0, shortHeight_px - stripHeight_px);
	ffmpeg::run({u"-filter_complex"_s, drawing(top_px), u"-map"_s, u"[captions]"_s, u"-frames:v"_s,
		     QString::number(cues.size() + 1), u"-compression_level"_s, u"1"_s, u"caption-%d.png"_s},
		    folder);
	return {{u"-f"_s, u"concat"_s, u"-safe"_s, u"0"_s, u"-i"_s, u"captions.ffconcat"_s},
		u"[composed];[composed][1:v]overlay=x=0:y=%1:shortest=1"_s.arg(top_px)};
}
