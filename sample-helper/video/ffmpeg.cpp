#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/subprocess.hpp"
#include "video/ffmpeg.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ffmpeg {
namespace {

QString locate(const QString &name)
{
	const QString folder = environment::ffmpegFolder();
	QString program = folder.isEmpty() ? QStandardPaths::findExecutable(name)
					   : QStandardPaths::findExecutable(name, {folder});
	if (program.isEmpty() && folder.isEmpty()) {
		program = QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
	}
	if (program.isEmpty()) {
		throw Failure(u"%1 isn't installed. Install ffmpeg, then clip again."_s.arg(name));
	}
	return program;
}

subprocess::Result execute(const QString &name, const QStringList &arguments, const QString &workingFolder,
			   int limit_ms = -1)
{
	const subprocess::Result result = subprocess::run(locate(name), arguments, workingFolder, limit_ms);
	if (result.outcome == subprocess::Outcome::NotStarted) {
		throw Failure(u"%1 couldn't be started. Install ffmpeg again."_s.arg(name));
	}
	return result;
}

/// Runs ffmpeg with the arguments that every run of it needs in front.
subprocess::Result execute(const QStringList &arguments, const QString &workingFolder, int limit_ms = -1)
{
	const QStringList common{u"-hide_banner"_s, u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s};
	return execute(u"ffmpeg"_s, common + arguments, workingFolder, limit_ms);
}

/// ffmpeg's own messages, put so that a streamer knows what to do.
QString explain(const QString &errorOutput)
{
	for (const char *text : {"No space left on device", "File too large", "Disk quota exceeded"}) {
		if (errorOutput.contains(QLatin1String(text))) {
			return u"the disk is full. Free some space, then clip again."_s;
		}
	}
	if (errorOutput.contains(QLatin1String("Unknown encoder"))) {
		return u"this ffmpeg can't make H.264 video. Install a full build of ffmpeg."_s;
	}
	const QString lastLine = errorOutput.section(QLatin1Char('\n'), -1).left(200);
	return lastLine.isEmpty() ? u"ffmpeg stopped unexpectedly."_s : u"ffmpeg failed: %1."_s.arg(lastLine);
}

/// ffmpeg opens still pictures and even plain text as a "video"; neither is a replay.
bool isMovieFormat(const QString &format)
{
	return format != QLatin1String("tty") && format != QLatin1String("image2") &&
	       !format.endsWith(QLatin1String("_pipe"));
}

/// The end of the last packet of a stream: for files whose header gives no duration, such as one that was being
/// written when its program crashed.
double endOfPackets(const QString &path, int stream)
{
	const subprocess::Result result =
		execute(u"ffprobe"_s,
			{u"-v"_s, u"error"_s, u"-select_streams"_s, QString::number(stream), u"-show_entries"_s,
			 u"packet=pts_time"_s, u"-of"_s, u"csv=p=0"_s, fileAddress(path)},
			{});
	double end = 0;
	for (const QByteArray &line : result.output.split('\n')) {
		end = std::max(end, line.trimmed().split(',').first().toDouble());
	}
	return end;
}

} // namespace

QString fileAddress(const QString &path)
{
	return u"file:"_s + QFileInfo(path).absoluteFilePath();
}

Video probe(const QString &path)
{
	const subprocess::Result result = execute(
		u"ffprobe"_s,
		{u"-v"_s, u"error"_s, u"-of"_s, u"json"_s, u"-show_format"_s, u"-show_streams"_s, fileAddress(path)},
		{});
	const QJsonObject answer = QJsonDocument::fromJson(result.output).object();
	const QJsonObject format = answer.value(QLatin1String("format")).toObject();
	Video video{-1, -1, 0, format.value(QLatin1String("duration")).toString().toDouble()};
	const QJsonArray streams = answer.value(QLatin1String("streams")).toArray();
	for (qsizetype i = 0; i < streams.size(); ++i) {
		const QJsonObject stream = streams.at(i).toObject();
		const QString type = stream.value(QLatin1String("codec_type")).toString();
		const QJsonObject disposition = stream.value(QLatin1String("disposition")).toObject();
		const bool isCover = disposition.value(QLatin1String("attached_pic")).toInt() != 0;
		if (type == QLatin1String("video") && !isCover && video.videoStream < 0) {
			video.videoStream = static_cast<int>(i);
		} else if (type == QLatin1String("audio") && video.audioStream < 0) {
			// OBS puts the full mix on the first track.
			video.audioStream = static_cast<int>(i);
			video.audioChannels = stream.value(QLatin1String("channels")).toInt();
		}
	}
	const bool isMovie = isMovieFormat(format.value(QLatin1String("format_name")).toString());
	if (!result.succeeded() || video.videoStream < 0 || !isMovie) {
		throw Failure(u"%1 isn't a video that ffmpeg can read."_s.arg(QFileInfo(path).fileName()));
	}
	if (video.duration_s <= 0) {
		video.duration_s = endOfPackets(path, video.videoStream);
	}
	return video;
}

QSet<QString> encoderNames()
{
	QSet<QString> names{};
	const subprocess::Result result = execute({u"-encoders"_s}, {}, environment::trialLimit_ms());
	if (!result.succeeded()) {
		return names;
	}
	for (const QByteArray &line : result.output.split('\n')) {
		// Flags, name, description.
		names += QString::fromUtf8(line.simplified().split(' ').value(1));
	}
	return names;
}

bool succeeds(const QStringList &arguments)
{
	return execute(arguments, {}, environment::trialLimit_ms()).succeeded();
}

bool canDraw(const QString &filter, const QString &workingFolder)
{
	const subprocess::Result result =
		execute({u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=c=gray:s=270x480"_s, u"-vf"_s,
			 filter + u",format=gray"_s, u"-frames:v"_s, u"1"_s, u"-f"_s, u"rawvideo"_s, u"-"_s},
			workingFolder, environment::trialLimit_ms());
	const QByteArray &picture = result.output;
	return result.succeeded() && !picture.isEmpty() && picture.count(picture.front()) != picture.size();
}

QString tryToRun(const QStringList &arguments, const QString &workingFolder)
{
	const subprocess::Result result = execute(arguments, workingFolder);
	return result.succeeded() ? QString() : explain(result.errorOutput);
}

void run(const QStringList &arguments, const QString &workingFolder)
{
	const QString problem = tryToRun(arguments, workingFolder);
	if (!problem.isEmpty()) {
		throw Failure(problem);
	}
}

} // namespace ffmpeg
