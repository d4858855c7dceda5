#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "timecoded.hpp"
#include "videos.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace timecoded {
namespace {
// Nine squares tell the number, in two columns of the middle of the picture, which the layout keeps; one is always
// white.
constexpr int squares = 10;
constexpr int rows = 5;
constexpr int width_px = 320;
constexpr int height_px = 180;
constexpr int squareWidth_px = 40;
constexpr int squareHeight_px = 30;

int leftOf(int square)
{
	return 116 + square / rows * 48;
}

int topOf(int square)
{
	return 3 + square % rows * 36;
}

QString frames()
{
	QString filters = u"color=c=black:s=%1x%2:r=%3"_s.arg(width_px).arg(height_px).arg(framesPerSecond);
	for (int square = 0; square < squares; ++square) {
		const QString when = square == squares - 1 ? u"1"_s : u"bitand(n,%1)"_s.arg(1 << square);
		filters += u",drawbox=x=%1:y=%2:w=%3:h=%4:c=white:t=fill:enable='%5'"_s.arg(leftOf(square))
				   .arg(topOf(square))
				   .arg(squareWidth_px)
				   .arg(squareHeight_px)
				   .arg(when);
	}
	return filters;
}

QString beeps()
{
	QStringList spans{};
	for (const double beep_s : beeps_s()) {
		spans += u"between(t,%1,%2)"_s.arg(beep_s).arg(beep_s + 0.1);
	}
	return u"aevalsrc='0.8*sin(2*PI*1000*t)*(%1)':s=48000"_s.arg(spans.join(u'+'));
}

QString folder()
{
	static const QTemporaryDir folder;
	return folder.path();
}

/// The frames and sound that all replays with this key interval share.
QString source(int keyInterval)
{
	const QString path = folder() + u"/source-%1.mkv"_s.arg(keyInterval);
	if (!QFile::exists(path)) {
		videos::ffmpeg({u"-f"_s,
				u"lavfi"_s,
				u"-i"_s,
				frames(),
				u"-f"_s,
				u"lavfi"_s,
				u"-i"_s,
				beeps(),
				u"-t"_s,
				QString::number(length_s),
				u"-c:v"_s,
				u"libx264"_s,
				u"-preset"_s,
				u"superfast"_s,
				u"-bf"_s,
				u"2"_s,
				u"-g"_s,
				QString::number(keyInterval),
				u"-sc_threshold"_s,
				u"0"_s,
				u"-pix_fmt"_s,
				u"yuv420p"_s,
				u"-c:a"_s,
				u"aac"_s,
				path});
	}
	return path;
}

QList<int> numbersOf(const QString &path)
{
	// The middle of a square is one pixel of a picture of this size.
	constexpr double shortWidth_px = 54;
	constexpr double shortHeight_px = 96;
	const QByteArray bytes = videos::ffmpeg({u"-i"_s, path, u"-vf"_s, u"scale=54:96:flags=area,format=gray"_s,
						 u"-fps_mode"_s, u"passthrough"_s, u"-f"_s, u"rawvideo"_s, u"-"_s});
	constexpr double scale = shortHeight_px / height_px;
	constexpr double cutLeft_px = (width_px - shortWidth_px / scale) / 2;
	const auto size = static_cast<qsizetype>(shortWidth_px * shortHeight_px);
	QList<int> numbers{};
	for (qsizetype frame = 0; frame + size <= bytes.size(); frame += size) {
		int number = 0;
		for (int square = 0; square < squares; ++square) {
			const int x = static_cast<int>((leftOf(square) + squareWidth_px / 2.0 - cutLeft_px) * scale);
			const int y = static_cast<int>((topOf(square) + squareHeight_px / 2.0) * scale);
			const auto at = frame + y * static_cast<qsizetype>(shortWidth_px) + x;
			number |= (static_cast<unsigned char>(bytes[at]) > 127 ? 1 : 0) << square;
		}
		// Without the square that is always white it is none of our frames.
		constexpr int always = 1 << (squares - 1);
		numbers += (number & always) != 0 ? number - always : -1;
	}
	return numbers;
}

QList<double> beepsOf(const QString &path)
{
	constexpr int rate = 8000;
	const QByteArray bytes =
		videos::ffmpeg({u"-i"_s, path, u"-vn"_s, u"-af"_s, u"aresample=%1:async=1:first_pts=0"_s.arg(rate),
				u"-ac"_s, u"1"_s, u"-c:a"_s, u"pcm_f32le"_s, u"-f"_s, u"f32le"_s, u"-"_s});
	QList<float> samples(bytes.size() / static_cast<qsizetype>(sizeof(float)));
	std::memcpy(samples.data(), bytes.constData(), static_cast<std::size_t>(samples.size()) * sizeof(float));
	QList<double> beeps{};
	qsizetype lastLoud = -rate;
	for (qsizetype i = 0; i < samples.size(); ++i) {
		if (std::abs(samples[i]) > 0.2F) {
			if (i - lastLoud > rate / 10) {
				beeps += static_cast<double>(i) / rate;
			}
			lastLoud = i;
		}
	}
	return beeps;
}
} // namespace

QList<double> beeps_s()
{
	return {1.05, 5.3, 13.75, 17.1, 20.45, 23.6, 24.35, 27.25, 31.1, 33.25, 34.7, 36.1, 37.25, 38.1, 39.4};
}

QString replay(const Kind &kind)
{
	const QString path = folder() + u"/%1-%2-%3-%4"_s.arg(QLatin1String(kind.format))
						.arg(qHash(QByteArray(kind.options)))
						.arg(kind.start_s)
						.arg(kind.keyInterval);
	if (!QFile::exists(path)) {
		videos::ffmpeg(QStringList{u"-i"_s, source(kind.keyInterval), u"-c"_s, u"copy"_s,
					   u"-output_ts_offset"_s, QString::number(kind.start_s)} +
			       QString::fromLatin1(kind.options).split(u' ', Qt::SkipEmptyParts) +
			       QStringList{u"-f"_s, QLatin1String(kind.format), path});
	}
	return path;
}

Content contentOf(const QString &path)
{
	return {numbersOf(path), videos::frameTimes_s(path), beepsOf(path)};
}
} // namespace timecoded
