#include "preview.hpp"

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
#include <QTemporaryDir>

#include <filesystem>

namespace {

// Long enough for a streamer to flip through the looks, short enough for a newly installed font to show up.
constexpr qint64 cacheSeconds = 3600;

QString cachedPath(const Look &look)
{
	return settings::stateFolder() +
	       QStringLiteral("/previews/%1-%2-%3-%4.png").arg(look.layout, look.style, look.font, look.position);
}

bool isFresh(const QString &path)
{
	const QFileInfo file(path);
	return file.size() > 0 && file.lastModified().secsTo(QDateTime::currentDateTimeUtc()) < cacheSeconds;
}

/// A stand-in for a stream: coloured stripes as the game (so that cuts can be told), a bordered panel as the camera.
QString scene(const Region &camera, bool withLabels)
{
	const auto label = [withLabels](const char *file, double x, double y, int size) {
		return withLabels ? QStringLiteral(",drawtext=textfile=%1:expansion=none:font=Sans:fontsize=%2"
						   ":fontcolor=white@0.9:x=w*%3-text_w/2:y=h*%4-text_h/2")
					    .arg(QLatin1String(file))
					    .arg(size)
					    .arg(x)
					    .arg(y)
				  : QString();
	};
	return QStringLiteral("gradients=s=1280x720:r=1:n=4:c0=0x1b2a4a:c1=0x2f6f5e:c2=0x6a3d7c:c3=0x20304f"
			      ":x0=0:y0=0:x1=1279:y1=719:speed=0.00001:seed=1,format=yuv420p,"
			      "drawgrid=w=80:h=80:t=2:c=white@0.15,"
			      "drawbox=x=iw*%1:y=ih*%2:w=iw*%3:h=ih*%4:c=0xd98a3d:t=fill,"
			      "drawbox=x=iw*%1:y=ih*%2:w=iw*%3:h=ih*%4:c=0xffd9a8:t=6")
		       .arg(camera.x)
		       .arg(camera.y)
		       .arg(camera.width)
		       .arg(camera.height) +
	       label("game.txt", 0.5, 0.4, 90) +
	       label("camera.txt", camera.x + camera.width / 2, camera.y + camera.height / 2, 48);
}

void writeText(const QString &path, const QString &text)
{
	QFile file(path);
	if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.flush()) {
		throw Failure(QStringLiteral("couldn't write %1 (%2).").arg(path, file.errorString()));
	}
}

void render(const Look &look, const QString &target)
{
	state::makeFolder(QFileInfo(target).absolutePath());
	// The scratch folder is on the target's own file system: the finished picture then appears at once and whole,
	// even while another run makes the same one.
	const QTemporaryDir scratch(QFileInfo(target).absolutePath() + QStringLiteral("/run-XXXXXX"));
	if (!scratch.isValid()) {
		throw Failure(QStringLiteral("couldn't make a preview (%1).").arg(scratch.errorString()));
	}
	writeText(scratch.filePath(captionFileName()), captionText(look, QStringLiteral("Clipped at 20:15")));
	writeText(scratch.filePath(QStringLiteral("game.txt")), QStringLiteral("GAME"));
	writeText(scratch.filePath(QStringLiteral("camera.txt")), QStringLiteral("CAMERA"));

	Look labelled = look;
	if (labelled.style == QLatin1String("none")) {
		labelled.style = styleKeys().first();
	}
	const bool canDrawText = ffmpeg::canDrawCaption(labelled, scratch.path());
	const QString caption = canDrawText ? captionFilter(look) : QString();
	const Region camera = cameraRegion();
	const QString graph = QStringLiteral("%1[source];%2;[framed]%3scale=540:960:flags=area[picture]")
				      .arg(scene(camera, canDrawText), layoutGraph(look.layout, camera),
					   caption.isEmpty() ? QString() : caption + QLatin1Char(','));
	ffmpeg::run({QStringLiteral("-filter_complex"), graph, QStringLiteral("-map"), QStringLiteral("[picture]"),
		     QStringLiteral("-frames:v"), QStringLiteral("1"), QStringLiteral("-update"), QStringLiteral("1"),
		     QStringLiteral("preview.png")},
		    scratch.path());
	std::error_code error{};
	std::filesystem::rename(QFileInfo(scratch.filePath(QStringLiteral("preview.png"))).filesystemFilePath(),
				QFileInfo(target).filesystemFilePath(), error);
	if (error) {
		throw Failure(QStringLiteral("couldn't store the preview (%1).")
				      .arg(QString::fromStdString(error.message())));
	}
}

} // namespace

int runPreview(const QCommandLineParser &parser)
{
	QStringList notes{};
	const Look look = requestedLook(parser, notes);
	for (const QString &note : std::as_const(notes)) {
		qWarning("%s", qUtf8Printable(note));
	}
	const QString path = cachedPath(look);
	if (!isFresh(path)) {
		render(look, path);
	}
	sendEvent(QStringLiteral("preview"), {{QStringLiteral("path"), path}});
	return 0;
}
