#include "clip.hpp"

#include "account.hpp"
#include "captions.hpp"
#include "events.hpp"
#include "ffmpeg.hpp"
#include "layouts.hpp"
#include "look.hpp"
#include "settings.hpp"
#include "state.hpp"

#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr int longestClipSeconds = 3600;

int requestedSeconds(const QCommandLineParser &parser)
{
	bool isNumber = false;
	const int seconds = parser.value(QStringLiteral("seconds")).toInt(&isNumber);
	if (!isNumber || seconds < 1 || seconds > longestClipSeconds) {
		throw Failure(QStringLiteral("--seconds needs a whole number from 1 to %1.").arg(longestClipSeconds));
	}
	return seconds;
}

void requireReadable(const QString &path)
{
	const QFileInfo file(path);
	if (!file.exists()) {
		throw Failure(QStringLiteral("the replay %1 doesn't exist.").arg(path));
	}
	if (!file.isFile() || !QFile(path).open(QIODevice::ReadOnly)) {
		throw Failure(QStringLiteral("the replay %1 can't be read.").arg(path));
	}
	if (file.size() == 0) {
		throw Failure(QStringLiteral("the replay %1 is empty.").arg(file.fileName()));
	}
}

/// Removes what a run left behind that was killed (OBS was closed, the power failed). A file that is still being
/// written is younger than that.
void removeAbandonedParts(const QDir &folder)
{
	constexpr qint64 abandonedAfterSeconds = 600;
	const QDateTime now = QDateTime::currentDateTimeUtc();
	for (const QFileInfo &file : folder.entryInfoList({QStringLiteral("short-*.part")}, QDir::Files)) {
		if (file.lastModified().secsTo(now) > abandonedAfterSeconds) {
			QFile::remove(file.absoluteFilePath());
		}
	}
}

/// A name that sorts by time; the end keeps apart clips of the same second.
QString newShortName()
{
	return QStringLiteral("short-%1-%2")
		.arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")))
		.arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

void writeCaption(const QString &folder, const Look &look, const QString &replay)
{
	const QString moment = QFileInfo(replay).lastModified().toString(QStringLiteral("HH:mm"));
	QFile file(QDir(folder).filePath(captionFileName()));
	const QByteArray text = captionText(look, QStringLiteral("Clipped at %1").arg(moment)).toUtf8();
	if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
		throw Failure(QStringLiteral("couldn't write to %1 (%2).").arg(folder, file.errorString()));
	}
}

QStringList encodingArguments(const QString &replay, const ffmpeg::Video &video, int seconds, const QString &layout,
			      const QString &caption, const QString &target)
{
	const QString graph = QStringLiteral("[0:%1]format=yuv420p[source];%2;[framed]%3format=yuv420p[short]")
				      .arg(video.videoStream)
				      .arg(layoutGraph(layout, cameraRegion()),
					   caption.isEmpty() ? QString() : caption + QLatin1Char(','));
	const double start = std::max(0.0, video.durationSeconds - seconds);
	QStringList arguments{QStringLiteral("-ss"),
			      QString::number(start, 'f', 6),
			      QStringLiteral("-i"),
			      ffmpeg::fileAddress(replay),
			      QStringLiteral("-t"),
			      QString::number(seconds),
			      QStringLiteral("-filter_complex"),
			      graph,
			      QStringLiteral("-map"),
			      QStringLiteral("[short]")};
	if (video.audioStream >= 0) {
		arguments << QStringLiteral("-map") << QStringLiteral("0:%1").arg(video.audioStream)
			  << QStringLiteral("-c:a") << QStringLiteral("aac") << QStringLiteral("-b:a")
			  << QStringLiteral("160k") << QStringLiteral("-ac") << QStringLiteral("2");
	}
	// OBS goes on streaming meanwhile: "superfast" takes about two thirds of the processor time of "veryfast".
	arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
		  << QStringLiteral("superfast") << QStringLiteral("-crf") << QStringLiteral("22")
		  << QStringLiteral("-fpsmax") << QStringLiteral("60") << QStringLiteral("-map_chapters")
		  << QStringLiteral("-1") << QStringLiteral("-movflags") << QStringLiteral("+faststart")
		  << QStringLiteral("-f") << QStringLiteral("mp4") << ffmpeg::fileAddress(target);
	return arguments;
}

/// Makes the Short and returns its path.
QString makeShort(const QString &replay, int seconds, const Look &look, QStringList &notes)
{
	requireReadable(replay);
	const ffmpeg::Video video = ffmpeg::probe(replay);
	const QDir output(settings::outputFolder());
	state::makeFolder(output.absolutePath());
	removeAbandonedParts(output);

	const QTemporaryDir scratch(QDir(settings::stateFolder()).filePath(QStringLiteral("run-XXXXXX")));
	if (!scratch.isValid()) {
		throw Failure(QStringLiteral("couldn't write to %1 (%2).")
				      .arg(settings::stateFolder(), scratch.errorString()));
	}
	QString caption = captionFilter(look);
	if (!caption.isEmpty()) {
		writeCaption(scratch.path(), look, replay);
		if (!ffmpeg::canDrawCaption(look, scratch.path())) {
			caption.clear();
			notes += QStringLiteral("without a caption, this ffmpeg can't draw text");
		}
	}

	const QString name = newShortName();
	const QString part = output.filePath(name + QStringLiteral(".part"));
	const QString finished = output.filePath(name + QStringLiteral(".mp4"));
	const auto removePart = qScopeGuard([&part] { QFile::remove(part); });
	ffmpeg::run(encodingArguments(replay, video, seconds, look.layout, caption, part), scratch.path());
	if (ffmpeg::probe(part).durationSeconds <= 0) {
		throw Failure(QStringLiteral("ffmpeg found no pictures in %1.").arg(QFileInfo(replay).fileName()));
	}
	if (!QFile::rename(part, finished)) {
		throw Failure(QStringLiteral("couldn't store the Short in %1.").arg(output.absolutePath()));
	}
	return finished;
}

} // namespace

int runProcess(const QCommandLineParser &parser)
{
	const int seconds = requestedSeconds(parser);
	QStringList notes{};
	const Look look = requestedLook(parser, notes);
	const QString path = makeShort(parser.value(QStringLiteral("process")), seconds, look, notes);
	qInfo("made %s", qUtf8Printable(path));
	storeLook(look);

	const QJsonArray formatted{path};
	const Link link = currentLink();
	if (link == Link::revoked) {
		throw Failure(QStringLiteral("this device was revoked. The Short is %1.").arg(path),
			      {{QStringLiteral("relink"), true}, {QStringLiteral("formatted"), formatted}});
	}
	if (settings::offline()) {
		sendEvent(QStringLiteral("pending"), {{QStringLiteral("formatted"), formatted}});
		return 0;
	}
	if (link == Link::unlinked) {
		notes += QStringLiteral("kept on this computer, no account is connected");
	}
	QJsonObject members{{QStringLiteral("formatted"), formatted}};
	if (!notes.isEmpty()) {
		members[QStringLiteral("note")] = notes.join(QStringLiteral("; "));
	}
	sendEvent(QStringLiteral("done"), members);
	return 0;
}
