#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "captions/caption_source.hpp"
#include "captions/transcription.hpp"
#include "support/events.hpp"
#include "video/excerpt.hpp"

using namespace Qt::StringLiterals;

namespace {
/// Even a long film's subtitles take only a tenth of this.
constexpr qint64 maxSidecar_bytes = 1'000'000;

/// The subtitle file beside the replay; empty when there is none.
QString sidecarOf(const QString &replay)
{
	const QFileInfo file(replay);
	for (const char *suffix : {".srt", ".SRT", ".vtt", ".VTT"}) {
		const QString path = file.dir().filePath(file.completeBaseName() + QLatin1String(suffix));
		if (QFileInfo(path).isFile()) {
			return path;
		}
	}
	return {};
}

/// Throws Failure.
QList<Cue> readSidecar(const QString &path)
{
	const QString name = QFileInfo(path).fileName();
	QFile file(path);
	if (!file.open(QIODevice::ReadOnly)) {
		throw Failure(u"%1 can't be read."_s.arg(name));
	}
	if (file.size() > maxSidecar_bytes) {
		throw Failure(u"%1 is too large."_s.arg(name));
	}
	const QByteArray content = file.read(maxSidecar_bytes);
	const QList<Cue> cues = isText(content) ? parseSubtitles(content) : QList<Cue>();
	if (cues.isEmpty()) {
		throw Failure(u"%1 holds no subtitles."_s.arg(name));
	}
	return cues;
}

QList<Cue> momentOf(const Excerpt &excerpt)
{
	const QString moment = QFileInfo(excerpt.replay).lastModified().toString(u"HH:mm"_s);
	return {{0, qRound64(excerpt.length_s * 1000), u"Clipped at %1"_s.arg(moment)}};
}
} // namespace

QList<Cue> captionsOf(const Excerpt &excerpt, const QString &folder, QStringList &notes)
{
	try {
		const QString sidecar = sidecarOf(excerpt.replay);
		if (!sidecar.isEmpty()) {
			const qint64 start_ms = qRound64(excerpt.start_s * 1000);
			return cuesWithin(readSidecar(sidecar), start_ms, start_ms + qRound64(excerpt.length_s * 1000));
		}
		return transcription::isWanted() ? transcription::transcribe(excerpt, folder) : momentOf(excerpt);
	} catch (const Failure &failure) {
		notes += u"without captions, %1"_s.arg(failure.clause());
		return {};
	}
}
