#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include "videos.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace videos {
namespace {
QByteArray outputOf(const QString &program, const QStringList &arguments)
{
	QProcess process;
	process.setStandardInputFile(QProcess::nullDevice());
	process.start(program, arguments);
	process.waitForFinished(120000);
	const QByteArray errors = process.readAllStandardError();
	if (!errors.isEmpty()) {
		qWarning("%s: %s", qUtf8Printable(program), errors.constData());
	}
	return process.readAllStandardOutput();
}

QString make(const QString &name, const QString &picture, const QString &sound, const QString &seconds)
{
	static const QTemporaryDir folder;
	const QString path = folder.filePath(name);
	if (!QFile::exists(path)) {
		QStringList arguments{u"-f"_s, u"lavfi"_s, u"-i"_s, picture};
		if (!sound.isEmpty()) {
			arguments << u"-f"_s << u"lavfi"_s << u"-i"_s << sound << u"-c:a"_s << u"pcm_s16le"_s;
		}
		arguments << u"-c:v"_s << u"libx264"_s << u"-preset"_s << u"ultrafast"_s << u"-pix_fmt"_s
			  << u"yuv420p"_s << u"-t"_s << seconds << path;
		ffmpeg(arguments);
	}
	return path;
}

QString color(const QString &name)
{
	return u"color=c=%1:s=320x180:r=%2"_s.arg(name).arg(framesPerSecond);
}

QString tone()
{
	return u"sine=r=48000"_s;
}
} // namespace

QString regions()
{
	return make(u"regions.mkv"_s,
		    color(u"red"_s) + u",drawbox=x=160:y=0:w=160:h=180:c=blue:t=fill,"
				      "drawbox=x=224:y=99:w=96:h=81:c=lime:t=fill"_s,
		    tone(), u"4"_s);
}

QString blackThenWhite()
{
	const QString pictures = color(u"black"_s) + u":d=4[a];"_s + color(u"white"_s) + u":d=2[b];[a][b]concat"_s;
	return make(u"black then white.mkv"_s, pictures, tone(), u"6"_s);
}

QString silent()
{
	return make(u"silent.mp4"_s, u"testsrc2=s=320x180:r=%1"_s.arg(framesPerSecond), {}, u"2"_s);
}

QString atFrameRate(int rate)
{
	return make(u"rate-%1.mkv"_s.arg(rate), u"testsrc2=s=320x180:r=%1"_s.arg(rate), {}, u"1"_s);
}

QString withTones(const QList<double> &amplitudes)
{
	QStringList channels{};
	for (const double amplitude : amplitudes) {
		channels += u"%1*sin(2*PI*%2*t)"_s.arg(amplitude).arg(400 + 100 * channels.size());
	}
	return make(u"tones-%1.mkv"_s.arg(channels.size()), color(u"gray"_s),
		    u"aevalsrc=%1:s=48000:c=%2c"_s.arg(channels.join(u'|')).arg(channels.size()), u"2"_s);
}

QString hdr(const char *transfer)
{
	static const QTemporaryDir folder;
	const QString path = folder.filePath(QLatin1String(transfer) + u".mkv"_s);
	if (!QFile::exists(path)) {
		// 203 nits are 58 % of the range of PQ and 75 % of that of HLG.
		const int level = 64 + static_cast<int>(876 * (QByteArray(transfer) == "smpte2084" ? 0.581 : 0.75));
		ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s,
			u"color=s=320x180:r=25,format=yuv420p10le,geq=lum=%1:cb=512:cr=512,"
			"setparams=range=tv:color_primaries=bt2020:color_trc=%2:colorspace=bt2020nc"_s.arg(level)
				.arg(QLatin1String(transfer)),
			u"-t"_s, u"1"_s, u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"ultrafast"_s, path});
	}
	return path;
}

Details details(const QString &path)
{
	const QByteArray answer = outputOf(
		u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-of"_s, u"json"_s, u"-show_streams"_s, u"-show_format"_s, path});
	const QJsonObject object = QJsonDocument::fromJson(answer).object();
	Details result{};
	result.duration_s = object[u"format"].toObject()[u"duration"].toString().toDouble();
	const QJsonArray streams = object[u"streams"].toArray();
	for (const auto &value : streams) {
		const QJsonObject stream = value.toObject();
		const QString codec = stream[u"codec_name"].toString();
		if (stream[u"codec_type"].toString() == u"audio") {
			result.audioCodec = codec;
			result.audioChannels = stream[u"channels"].toInt();
			continue;
		}
		result.videoCodec = codec;
		result.width = stream[u"width"].toInt();
		result.height = stream[u"height"].toInt();
		result.colourTransfer = stream[u"color_transfer"].toString();
		result.colourPrimaries = stream[u"color_primaries"].toString();
		result.colourMatrix = stream[u"color_space"].toString();
		result.pixelFormat = stream[u"pix_fmt"].toString();
		const QStringList rate = stream[u"avg_frame_rate"].toString().split(u'/');
		result.frameRate =
			rate.size() == 2 && rate[1].toInt() > 0 ? rate[0].toDouble() / rate[1].toDouble() : 0;
	}
	return result;
}

QList<int> brightness(const QString &path)
{
	const QByteArray bytes = ffmpeg(
		{u"-i"_s, path, u"-vf"_s, u"scale=1:1:flags=area,format=gray"_s, u"-f"_s, u"rawvideo"_s, u"-"_s});
	QList<int> result{};
	for (const char byte : bytes) {
		result += static_cast<unsigned char>(byte);
	}
	return result;
}

QList<double> frameTimes_s(const QString &path)
{
	const QByteArray answer =
		outputOf(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-select_streams"_s, u"v:0"_s, u"-show_entries"_s,
					u"packet=pts_time"_s, u"-of"_s, u"csv=p=0"_s, path});
	QList<double> times{};
	for (const QByteArray &line : answer.split('\n')) {
		if (!line.isEmpty()) {
			times += line.split(',').first().toDouble();
		}
	}
	std::sort(times.begin(), times.end());
	return times;
}

QList<double> loudness(const QString &path)
{
	const int channels = details(path).audioChannels;
	const QByteArray bytes =
		ffmpeg({u"-i"_s, path, u"-vn"_s, u"-c:a"_s, u"pcm_f32le"_s, u"-f"_s, u"f32le"_s, u"-"_s});
	QList<float> samples(bytes.size() / static_cast<qsizetype>(sizeof(float)));
	std::memcpy(samples.data(), bytes.constData(), static_cast<std::size_t>(samples.size()) * sizeof(float));
	QList<double> sums(channels);
	for (qsizetype i = 0; i < samples.size() && channels > 0; ++i) {
		sums[i % channels] += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
	}
	for (double &sum : sums) {
		sum = std::sqrt(sum * channels / static_cast<double>(samples.size()));
	}
	return sums;
}

QByteArray firstFrame(const QString &path)
{
	return ffmpeg(
		{u"-i"_s, path, u"-frames:v"_s, u"1"_s, u"-pix_fmt"_s, u"rgb24"_s, u"-f"_s, u"rawvideo"_s, u"-"_s});
}

bool isFastStart(const QString &path)
{
	QFile file(path);
	if (!file.open(QIODevice::ReadOnly)) {
		return false;
	}
	const QByteArray content = file.readAll();
	const qsizetype index = content.indexOf("moov");
	return index > 0 && index < content.indexOf("mdat");
}

QByteArray ffmpeg(const QStringList &arguments)
{
	return outputOf(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-y"_s} + arguments);
}

QByteArray checksum(const QString &path)
{
	QFile file(path);
	QCryptographicHash hash(QCryptographicHash::Sha256);
	return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}
} // namespace videos
