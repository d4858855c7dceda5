#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonArray>

#include "captions/caption_pictures.hpp"
#include "captions/caption_source.hpp"
#include "captions/captions.hpp"
#include "commands/account.hpp"
#include "commands/clip.hpp"
#include "support/clip_queue.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/files.hpp"
#include "support/scratch_folder.hpp"
#include "video/colours.hpp"
#include "video/completeness.hpp"
#include "video/encoding.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr int maxClip_s = 3600;

int requestedLength_s(const QCommandLineParser &parser)
{
	bool isNumber = false;
	const int length_s = parser.value(u"seconds"_s).toInt(&isNumber);
	if (!isNumber || length_s < 1 || length_s > maxClip_s) {
		throw Failure(u"--seconds needs a whole number from 1 to %1."_s.arg(maxClip_s));
	}
	return length_s;
}

void requireReadable(const QString &path)
{
	const QFileInfo file(path);
	if (!file.exists()) {
		throw Failure(u"the replay %1 doesn't exist."_s.arg(path));
	}
	QFile content(path);
	if (!file.isFile() || !content.open(QIODevice::ReadOnly)) {
		const QString cause = file.isFile() ? files::cause(content.errorString()) : u"it is no file"_s;
		throw Failure(u"the replay %1 can't be read: %2."_s.arg(path, cause));
	}
	if (file.size() == 0) {
		throw Failure(u"the replay %1 is empty."_s.arg(file.fileName()));
	}
}

/// Whether this ffmpeg can draw captions. Throws Failure.
bool canDrawCaptions(const Look &look, const QDir &folder)
{
	// Plain names in ffmpeg's working folder need none of its escaping rules.
	files::write(folder.filePath(u"trial.ass"_s), captionScript(look, {{0, 1000, u"Trial"_s}}));
	return ffmpeg::canDraw(u"ass=trial.ass"_s, folder.path());
}

/// The captions as pictures; empty without captions.
CaptionPictures captionPictures(const Excerpt &excerpt, const Look &look, const QString &folder, QStringList &notes)
{
	if (!hasCaptions(look)) {
		return {};
	}
	try {
		if (!canDrawCaptions(look, folder)) {
			notes += u"without captions, this ffmpeg can't draw text"_s;
			return {};
		}
		const QList<Cue> cues = captionsOf(excerpt, folder, notes);
		return cues.isEmpty() ? CaptionPictures{} : drawCaptions(look, cues, folder);
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
		notes += u"without captions, they couldn't be stored"_s;
		return {};
	}
}

/// Makes the Short and returns its path.
QString makeShort(const QString &replay, int length_s, const Look &look, QStringList &notes)
{
	requireReadable(replay);
	const Excerpt excerpt = lastSecondsOf(replay, length_s);
	const QDir output(environment::outputFolder());
	files::makeFolder(output.absolutePath());
	removeLeftovers(replay);

	const ClipTurn turn;
	ScratchFolder scratch(environment::stateFolder());
	const Composition composition{ordinaryColours(excerpt.video, notes),
				      layoutGraph(look.layout, cameraRegion(look.layout, notes)),
				      captionPictures(excerpt, look, scratch.path(), notes)};

	const QString name = newShortName();
	const QString part = output.filePath(name + u".part"_s);
	const QString finished = output.filePath(name + u".mp4"_s);
	scratch.adopt(part);
	const Reading reading = encode(excerpt, composition, scratch.path(), part, notes);
	noteWhatIsMissing(part, excerpt, reading, length_s, notes);
	files::move(part, finished);
	return finished;
}

/// Remembers the choices for the next run. A failure becomes a note: the Short is made.
void rememberLook(const Look &look, QStringList &notes)
{
	try {
		storeLook(look);
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
		notes += u"its look isn't remembered, %1"_s.arg(failure.clause());
	}
}
} // namespace

int runProcess(const QCommandLineParser &parser)
{
	for (const QString &problem : environment::problems()) {
		qWarning("%s", qUtf8Printable(problem));
	}
	const int length_s = requestedLength_s(parser);
	QStringList notes{};
	const Look look = requestedLook(parser, notes);
	const QString path = makeShort(parser.value(u"process"_s), length_s, look, notes);
	qInfo("made %s", qUtf8Printable(path));
	rememberLook(look, notes);
	for (const QString &note : std::as_const(notes)) {
		qInfo("note: %s", qUtf8Printable(note));
	}

	const QJsonArray formatted{path};
	const Link link = currentLink();
	if (link == Link::Revoked) {
		throw Failure(u"this device was revoked. The Short is %1."_s.arg(path),
			      {{u"relink"_s, true}, {u"formatted"_s, formatted}});
	}
	const bool isOffline = environment::isOffline();
	if (link == Link::Unlinked && !isOffline) {
		notes += u"kept on this computer, no account is connected"_s;
	}
	QJsonObject members{{u"formatted"_s, formatted}};
	if (!notes.isEmpty()) {
		members[u"note"_s] = notes.join(u"; "_s);
	}
	sendEvent(isOffline ? u"pending"_s : u"done"_s, members);
	return 0;
}
