#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include "video/ffmpeg.hpp"
#include "video/probe.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ffmpeg {
namespace {
/// ffmpeg opens still pictures and even plain text as a "video"; neither is a replay.
bool isMovieFormat(const QString &format)
{
	return format != QLatin1String("tty") && format != QLatin1String("image2") &&
	       !format.endsWith(QLatin1String("_pipe"));
}

/// ffprobe writes times as texts.
double seconds(const QJsonObject &object, QLatin1StringView member)
{
	return object.value(member).toString().toDouble();
}

QString hdrTransfer(const QJsonObject &stream)
{
	const QString transfer = stream.value(QLatin1String("color_transfer")).toString();
	const bool isHdr = transfer == QLatin1String("smpte2084") || transfer == QLatin1String("arib-std-b67");
	return isHdr ? transfer : QString();
}

void addStream(Video &video, const QJsonObject &stream, int index)
{
	const QString type = stream.value(QLatin1String("codec_type")).toString();
	const QJsonObject disposition = stream.value(QLatin1String("disposition")).toObject();
	const bool isCover = disposition.value(QLatin1String("attached_pic")).toInt() != 0;
	if (type == QLatin1String("video") && !isCover && video.videoStream < 0) {
		video.videoStream = index;
		video.hdrTransfer = hdrTransfer(stream);
	} else if (type == QLatin1String("audio") && video.audioStream < 0) {
		// OBS puts the full mix on the first track.
		video.audioStream = index;
		video.audioChannels = stream.value(QLatin1String("channels")).toInt();
		video.audioDuration_s = seconds(stream, QLatin1String("duration"));
	}
}

/// A line such as "0.040000,0.000000,0.040000,K__"; nothing where a frame has no time.
std::optional<Frame> parseFrame(const QByteArray &line)
{
	const QList<QByteArray> parts = line.trimmed().split(',');
	bool hasTime = false;
	const double time_s = parts.first().toDouble(&hasTime);
	if (!hasTime || parts.size() < 4) {
		return std::nullopt;
	}
	bool hasDecodeTime = false;
	const double decode_s = parts[1].toDouble(&hasDecodeTime);
	return Frame{time_s, parts[2].toDouble(), hasDecodeTime ? decode_s : time_s, parts[3].startsWith('K')};
}
} // namespace

std::optional<Video> lookInto(const QString &path)
{
	const QJsonObject answer = QJsonDocument::fromJson(ask({u"-of"_s, u"json"_s, u"-show_format"_s,
								u"-show_streams"_s, fileAddress(path)}))
					   .object();
	const QJsonObject format = answer.value(QLatin1String("format")).toObject();
	Video video{};
	video.videoStream = -1;
	video.start_s = seconds(format, QLatin1String("start_time"));
	video.duration_s = seconds(format, QLatin1String("duration"));
	const QJsonArray streams = answer.value(QLatin1String("streams")).toArray();
	for (qsizetype i = 0; i < streams.size(); ++i) {
		addStream(video, streams.at(i).toObject(), static_cast<int>(i));
	}
	const bool isMovie = isMovieFormat(format.value(QLatin1String("format_name")).toString());
	return video.videoStream >= 0 && isMovie ? std::optional(video) : std::nullopt;
}

QList<Frame> frames(const QString &path, int stream, std::optional<double> from_s)
{
	QStringList arguments{u"-select_streams"_s,
			      QString::number(stream),
			      u"-show_entries"_s,
			      u"packet=pts_time,dts_time,duration_time,flags"_s,
			      u"-of"_s,
			      u"csv=p=0"_s};
	if (from_s) {
		arguments << u"-read_intervals"_s << QString::number(*from_s, 'f', 3) + QLatin1Char('%');
	}
	QList<Frame> result{};
	for (const QByteArray &line : ask(arguments << fileAddress(path)).split('\n')) {
		if (const std::optional<Frame> frame = parseFrame(line)) {
			result += *frame;
		}
	}
	std::stable_sort(result.begin(), result.end(),
			 [](const Frame &left, const Frame &right) { return left.time_s < right.time_s; });
	if (result.size() > 1 && result.last().duration_s <= 0) {
		result.last().duration_s = result.last().time_s - result[result.size() - 2].time_s;
	}
	return result;
}
} // namespace ffmpeg
