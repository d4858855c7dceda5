#include "videos.hpp"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

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
QString make(const QString &name, const QString &picture, bool withSound, const QString &seconds)
{
	static const QTemporaryDir folder;
	const QString path = folder.filePath(name);
	if (!QFile::exists(path)) {
		QStringList arguments{QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), picture};
		if (withSound) {
			arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
				  << QStringLiteral("sine=r=48000") << QStringLiteral("-c:a") << QStringLiteral("aac");
		}
		arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
			  << QStringLiteral("ultrafast") << QStringLiteral("-pix_fmt") << QStringLiteral("yuv420p")
			  << QStringLiteral("-t") << seconds << path;
		ffmpeg(arguments);
	}
	return path;
}

} // namespace

QString regions()
{
	return make(QStringLiteral("regions.mkv"),
		    QStringLiteral("color=c=red:s=320x180:r=25,drawbox=x=160:y=0:w=160:h=180:c=blue:t=fill,"
				   "drawbox=x=224:y=99:w=96:h=81:c=lime:t=fill"),
		    true, QStringLiteral("4"));
}

QString blackThenWhite()
{
	return make(
		QStringLiteral("black then white.mkv"),
		QStringLiteral("color=c=black:s=320x180:r=25:d=4[a];color=c=white:s=320x180:r=25:d=2[b];[a][b]concat"),
		true, QStringLiteral("6"));
}

QString silent()
{
	return make(QStringLiteral("silent.mp4"), QStringLiteral("testsrc2=s=320x180:r=25"), false,
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
	result.durationSeconds =
		object[QLatin1String("format")].toObject()[QLatin1String("duration")].toString().toDouble();
	const QJsonArray streams = object[QLatin1String("streams")].toArray();
	for (const auto &value : streams) {
		const QJsonObject stream = value.toObject();
		const QString codec = stream[QLatin1String("codec_name")].toString();
		if (stream[QLatin1String("codec_type")].toString() == QLatin1String("audio")) {
			result.audioCodec = codec;
			continue;
		}
		result.videoCodec = codec;
		result.width = stream[QLatin1String("width")].toInt();
		result.height = stream[QLatin1String("height")].toInt();
		result.pixelFormat = stream[QLatin1String("pix_fmt")].toString();
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
