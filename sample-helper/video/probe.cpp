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
	return format != u"tty" && format != u"image2" && !format.endsWith(u"_pipe");
}

/// ffprobe writes times as texts.
double seconds(const QJsonObject &object, QStringView member)
{
	return object.value(member).toString().toDouble();
}

QString hdrTransfer(const QJsonObject &stream)
{
	const QString transfer = stream.value(u"color_transfer").toString();
	const bool isHdr = transfer == u"smpte2084" || transfer == u"arib-std-b67";
	return isHdr ? transfer : QString();
}

void addStream(Video &video, const QJsonObject &stream, int index)
{
	const QString type = stream.value(u"codec_type").toString();
	const QJsonObject disposition = stream.value(u"disposition").toObject();
	const bool isCover = disposition.value(u"attached_pic").toInt() != 0;
	if (type == u"video" && !isCover && video.videoStream < 0) {
		video.videoStream = index;
		video.hdrTransfer = hdrTransfer(stream);
	} else if (type == u"audio" && video.audioStream < 0) {
		// OBS puts the full mix on the first track.
		video.audioStream = index;
		video.audioChannels = stream.value(u"channels").toInt();
		video.audioDuration_s = seconds(stream, u"duration");
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
	const QJsonObject format = answer.value(u"format").toObject();
	Video video{};
	video.videoStream = -1;
	video.start_s = seconds(format, u"start_time");
	video.duration_s = seconds(format, u"duration");
	const QJsonArray streams = answer.value(u"streams").toArray();
	for (qsizetype i = 0; i < streams.size(); ++i) {
		addStream(video, streams.at(i).toObject(), static_cast<int>(i));
	}
	const bool isMovie = isMovieFormat(format.value(u"format_name").toString());
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
		arguments << u"-read_intervals"_s << QString::number(*from_s, 'f', 3) + u'%';
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
