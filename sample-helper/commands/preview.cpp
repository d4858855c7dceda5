#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "captions/caption_text.hpp"
#include "captions/captions.hpp"
#include "commands/preview.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/files.hpp"
#include "support/scratch_folder.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

namespace {
// Long enough for a streamer to flip through the looks, short enough for a newly installed font to show up.
constexpr qint64 cacheLifetime_s = 3600;

QString cachedPath(const Look &look, const Region &camera)
{
	return environment::stateFolder() +
	       u"/previews/%1-%2-%3-%4-%5-%6-%7-%8.png"_s.arg(look.layout, look.style, look.font, look.position)
		       .arg(camera.x)
		       .arg(camera.y)
		       .arg(camera.width)
		       .arg(camera.height);
}

bool isFresh(const QString &path)
{
	const QFileInfo file(path);
	const qint64 age_s = file.lastModified().secsTo(QDateTime::currentDateTimeUtc());
	// A time in the future comes from a clock that was wrong.
	return file.size() > 0 && age_s >= 0 && age_s < cacheLifetime_s;
}

/// Removes previews that nobody has asked for since yesterday, and nothing else that may lie there.
void removeOldPreviews()
{
	constexpr qint64 lifetime_s = 86400;
	static const QRegularExpression ourName(uR"(^[a-z-]+-[a-z]+-[a-z]+-[a-z]+(-[0-9][0-9.e-]*){4}\.png$)"_s);
	const QDateTime now = QDateTime::currentDateTimeUtc();
	const QDir folder(environment::stateFolder() + u"/previews"_s);
	for (const QFileInfo &file : folder.entryInfoList({u"*.png"_s}, QDir::Files | QDir::NoSymLinks)) {
		if (ourName.match(file.fileName()).hasMatch() && file.lastModified().secsTo(now) > lifetime_s) {
			QFile::remove(file.absoluteFilePath());
		}
	}
}

constexpr int sceneWidth_px = 1280;
constexpr int sceneHeight_px = 720;

/// A fake of a stream: coloured stripes as the game (so that cuts can be told), a bordered panel as the camera.
QString scene(const Region &camera)
{
	return u"gradients=s=%5x%6:r=1:n=4:c0=0x1b2a4a:c1=0x2f6f5e:c2=0x6a3d7c:c3=0x20304f"
	       ":x0=0:y0=0:x1=1279:y1=719:speed=0.00001:seed=1,format=yuv420p,"
	       "drawgrid=w=80:h=80:t=2:c=white@0.15,"
	       "drawbox=x=iw*%1:y=ih*%2:w=iw*%3:h=ih*%4:c=0xd98a3d:t=fill,"
	       "drawbox=x=iw*%1:y=ih*%2:w=iw*%3:h=ih*%4:c=0xffd9a8:t=6"_s.arg(camera.x)
		       .arg(camera.y)
		       .arg(camera.width)
		       .arg(camera.height)
		       .arg(sceneWidth_px)
		       .arg(sceneHeight_px);
}

/// A script that names the parts of the scene.
QByteArray labels(const Region &camera)
{
	const QString styles = u"Style: Label,Sans,64,&H19FFFFFF,&H19FFFFFF,&HFF000000,&HFF000000,0,0,0,0,"
			       "100,100,0,0,1,0,0,5,0,0,0,1\n"_s;
	const QString event = u"Dialogue: 0,0:00:00.00,0:00:10.00,Label,,0,0,0,,{\\pos(%1,%2)\\fs%3}%4\n"_s;
	return captiontext::makeScript(
		sceneWidth_px, sceneHeight_px, styles,
		event.arg(sceneWidth_px / 2).arg(sceneHeight_px * 2 / 5).arg(110).arg(u"GAME"_s) +
			event.arg(sceneWidth_px * (camera.x + camera.width / 2))
				.arg(sceneHeight_px * (camera.y + camera.height / 2))
				.arg(60)
				.arg(u"CAMERA"_s));
}

/// The filter graph of the whole picture; the scripts that it needs go to `folder`.
QString graphOf(const Look &look, const Region &camera, const QDir &folder)
{
	files::write(folder.filePath(u"labels.ass"_s), labels(camera));
	files::write(folder.filePath(u"captions.ass"_s),
		     captionScript(look, {{0, 10000, u"Captions look like this"_s}}));
	const bool canDrawText = ffmpeg::canDraw(u"ass=labels.ass"_s, folder.path());
	return scene(camera) + (canDrawText ? u",ass=labels.ass"_s : QString()) + u"[source];"_s +
	       layoutGraph(look.layout, camera) +
	       (canDrawText && hasCaptions(look) ? u",ass=captions.ass"_s : QString()) +
	       u",scale=540:960:flags=area[picture]"_s;
}

void render(const Look &look, const Region &camera, const QString &target)
{
	// The scratch folder is on the target's own file system: the finished picture then appears at once and whole,
	// even while another run makes the same one.
	const ScratchFolder scratch(QFileInfo(target).absolutePath());
	ffmpeg::run({u"-filter_complex"_s, graphOf(look, camera, QDir(scratch.path())), u"-map"_s, u"[picture]"_s,
		     u"-frames:v"_s, u"1"_s, u"-update"_s, u"1"_s, u"preview.png"_s},
		    scratch.path());
	files::move(scratch.filePath(u"preview.png"_s), target);
}
} // namespace

int runPreview(const QCommandLineParser &parser)
{
	QStringList notes{};
	const Look look = requestedLook(parser, notes);
	const Region camera = cameraRegion(look.layout, notes);
	for (const QString &note : std::as_const(notes)) {
		qWarning("%s", qUtf8Printable(note));
	}
	removeOldPreviews();
	const QString path = cachedPath(look, camera);
	if (!isFresh(path)) {
		render(look, camera, path);
	}
	sendEvent(u"preview"_s, {{u"path"_s, path}});
	return 0;
}
