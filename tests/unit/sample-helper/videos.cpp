#include "videos.hpp"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>

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

/// Makes the file on first use.
QString make(const QString &name, const QString &picture, const QString &sound, const QString &seconds)
{
	static const QTemporaryDir folder;
	const QString path = folder.filePath(name);
	if (!QFile::exists(path)) {
		QStringList arguments{QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), picture};
		if (!sound.isEmpty()) {
			arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i") << sound
				  << QStringLiteral("-c:a") << QStringLiteral("pcm_s16le");
		}
		arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
			  << QStringLiteral("ultrafast") << QStringLiteral("-pix_fmt") << QStringLiteral("yuv420p")
			  << QStringLiteral("-t") << seconds << path;
		ffmpeg(arguments);
	}
	return path;
}

QString tone()
{
	return QStringLiteral("sine=r=48000");
}

} // namespace

QString regions()
{
	return make(QStringLiteral("regions.mkv"),
		    QStringLiteral("color=c=red:s=320x180:r=25,drawbox=x=160:y=0:w=160:h=180:c=blue:t=fill,"
				   "drawbox=x=224:y=99:w=96:h=81:c=lime:t=fill"),
		    tone(), QStringLiteral("4"));
}

QString blackThenWhite()
{
	return make(
		QStringLiteral("black then white.mkv"),
		QStringLiteral("color=c=black:s=320x180:r=25:d=4[a];color=c=white:s=320x180:r=25:d=2[b];[a][b]concat"),
		tone(), QStringLiteral("6"));
}

QString silent()
{
	return make(QStringLiteral("silent.mp4"), QStringLiteral("testsrc2=s=320x180:r=25"), {}, QStringLiteral("2"));
}

QString atFrameRate(int rate)
{
	return make(QStringLiteral("rate-%1.mkv").arg(rate), QStringLiteral("testsrc2=s=320x180:r=%1").arg(rate), {},
		    QStringLiteral("1"));
}

QString withTones(const QList<double> &amplitudes)
{
	QStringList channels{};
	for (const double amplitude : amplitudes) {
		channels += QStringLiteral("%1*sin(2*PI*%2*t)").arg(amplitude).arg(400 + 100 * channels.size());
	}
	return make(
		QStringLiteral("tones-%1.mkv").arg(channels.size()), QStringLiteral("color=c=gray:s=320x180:r=25"),
		QStringLiteral("aevalsrc=%1:s=48000:c=%2c").arg(channels.join(QLatin1Char('|'))).arg(channels.size()),
		QStringLiteral("2"));
}

Details details(const QString &path)
{
	const QByteArray answer =
		outputOf(QStringLiteral("ffprobe"),
			 {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-of"), QStringLiteral("json"),
			  QStringLiteral("-show_streams"), QStringLiteral("-show_format"), path});
	const QJsonObject object = QJsonDocument::fromJson(answer).object();
	Details result{};
	result.duration_s = object[QLatin1String("format")].toObject()[QLatin1String("duration")].toString().toDouble();
	const QJsonArray streams = object[QLatin1String("streams")].toArray();
	for (const auto &value : streams) {
		const QJsonObject stream = value.toObject();
		const QString codec = stream[QLatin1String("codec_name")].toString();
		if (stream[QLatin1String("codec_type")].toString() == QLatin1String("audio")) {
			result.audioCodec = codec;
			result.audioChannels = stream[QLatin1String("channels")].toInt();
			continue;
		}
		result.videoCodec = codec;
		result.width = stream[QLatin1String("width")].toInt();
		result.height = stream[QLatin1String("height")].toInt();
		result.pixelFormat = stream[QLatin1String("pix_fmt")].toString();
		const QStringList rate = stream[QLatin1String("avg_frame_rate")].toString().split(QLatin1Char('/'));
		result.frameRate =
			rate.size() == 2 && rate[1].toInt() > 0 ? rate[0].toDouble() / rate[1].toDouble() : 0;
	}
	return result;
}

QList<int> brightness(const QString &path)
{
	const QByteArray bytes = ffmpeg({QStringLiteral("-i"), path, QStringLiteral("-vf"),
					 QStringLiteral("scale=1:1:flags=area,format=gray"), QStringLiteral("-f"),
					 QStringLiteral("rawvideo"), QStringLiteral("-")});
	QList<int> result{};
	for (const char byte : bytes) {
		result += static_cast<unsigned char>(byte);
	}
	return result;
}

QList<double> loudness(const QString &path)
{
	const int channels = details(path).audioChannels;
	const QByteArray bytes = ffmpeg({QStringLiteral("-i"), path, QStringLiteral("-vn"), QStringLiteral("-c:a"),
					 QStringLiteral("pcm_f32le"), QStringLiteral("-f"), QStringLiteral("f32le"),
					 QStringLiteral("-")});
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
	return ffmpeg({QStringLiteral("-i"), path, QStringLiteral("-frames:v"), QStringLiteral("1"),
		       QStringLiteral("-pix_fmt"), QStringLiteral("rgb24"), QStringLiteral("-f"),
		       QStringLiteral("rawvideo"), QStringLiteral("-")});
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
	return outputOf(QStringLiteral("ffmpeg"),
			QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")} + arguments);
}

QByteArray checksum(const QString &path)
{
	QFile file(path);
	QCryptographicHash hash(QCryptographicHash::Sha256);
	return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}

} // namespace videos
