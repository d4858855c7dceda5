#include "commands/clip.hpp"

#include "captions/caption_source.hpp"
#include "captions/captions.hpp"
#include "commands/account.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/leftovers.hpp"
#include "support/state.hpp"
#include "video/encoding.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTemporaryDir>

namespace {

constexpr int longestClip_s = 3600;

int requestedLength_s(const QCommandLineParser &parser)
{
	bool isNumber = false;
	const int length_s = parser.value(QStringLiteral("seconds")).toInt(&isNumber);
	if (!isNumber || length_s < 1 || length_s > longestClip_s) {
		throw Failure(QStringLiteral("--seconds needs a whole number from 1 to %1.").arg(longestClip_s));
	}
	return length_s;
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

/// A name that sorts by time; the end keeps apart clips of the same second.
QString newShortName()
{
	return QStringLiteral("short-%1-%2")
		.arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")))
		.arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

/// Stores a script of captions; false, with a word in `notes`, when that fails.
bool storeScript(const QString &path, const QByteArray &script, QStringList &notes)
{
	try {
		state::writeFile(path, script);
		return true;
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
		notes += QStringLiteral("without captions, they couldn't be stored");
		return false;
	}
}

/// The filter that shows the captions, with a comma in front; empty without captions.
QString captionFilter(const Excerpt &excerpt, const Look &look, const QString &folder, QStringList &notes)
{
	if (!hasCaptions(look)) {
		return {};
	}
	// Plain names in ffmpeg's working folder need none of its escaping rules.
	const QDir files(folder);
	if (!storeScript(files.filePath(QStringLiteral("trial.ass")),
			 captionScript(look, {{0, 1000, QStringLiteral("Trial")}}), notes)) {
		return {};
	}
	if (!ffmpeg::canDraw(QStringLiteral("ass=trial.ass"), folder)) {
		notes += QStringLiteral("without captions, this ffmpeg can't draw text");
		return {};
	}
	const QList<Cue> cues = captionsOf(excerpt, folder, notes);
	if (cues.isEmpty() ||
	    !storeScript(files.filePath(QStringLiteral("captions.ass")), captionScript(look, cues), notes)) {
		return {};
	}
	return QStringLiteral(",ass=captions.ass");
}

/// Makes the Short and returns its path.
QString makeShort(const QString &replay, int length_s, const Look &look, QStringList &notes)
{
	requireReadable(replay);
	const Excerpt excerpt = lastSecondsOf(replay, length_s);
	const QDir output(environment::outputFolder());
	state::makeFolder(output.absolutePath());
	removeLeftovers(replay);

	const QTemporaryDir scratch(QDir(environment::stateFolder()).filePath(QStringLiteral("run-XXXXXX")));
	if (!scratch.isValid()) {
		throw Failure(QStringLiteral("couldn't write to %1 (%2).")
				      .arg(environment::stateFolder(), scratch.errorString()));
	}
	const QString graph = layoutGraph(look.layout, cameraRegion(look.layout)) +
			      captionFilter(excerpt, look, scratch.path(), notes);

	const QString name = newShortName();
	const QString part = output.filePath(name + QStringLiteral(".part"));
	const QString finished = output.filePath(name + QStringLiteral(".mp4"));
	const auto removePart = qScopeGuard([&part] { QFile::remove(part); });
	encode(excerpt, graph, scratch.path(), part, notes);
	if (ffmpeg::probe(part).duration_s <= 0) {
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
	const int length_s = requestedLength_s(parser);
	QStringList notes{};
	const Look look = requestedLook(parser, notes);
	const QString path = makeShort(parser.value(QStringLiteral("process")), length_s, look, notes);
	qInfo("made %s", qUtf8Printable(path));
	storeLook(look);

	const QJsonArray formatted{path};
	const Link link = currentLink();
	if (link == Link::revoked) {
		throw Failure(QStringLiteral("this device was revoked. The Short is %1.").arg(path),
			      {{QStringLiteral("relink"), true}, {QStringLiteral("formatted"), formatted}});
	}
	if (environment::isOffline()) {
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
