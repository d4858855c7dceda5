#include "transcription.hpp"

#include "events.hpp"
#include "excerpt.hpp"
#include "ffmpeg.hpp"
#include "program.hpp"
#include "settings.hpp"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace transcription {
namespace {

/// whisper.cpp hears one channel at 16 kHz.
void extractSound(const Excerpt &excerpt, const QString &target)
{
	ffmpeg::run(inputArguments(excerpt) +
			    QStringList{QStringLiteral("-map"), QStringLiteral("0:%1").arg(excerpt.video.audioStream),
					QStringLiteral("-ac"), QStringLiteral("1"), QStringLiteral("-ar"),
					QStringLiteral("16000"), QStringLiteral("-c:a"), QStringLiteral("pcm_s16le"),
					QStringLiteral("-f"), QStringLiteral("wav"), ffmpeg::fileAddress(target)},
		    {});
}

QString requireModel()
{
	const QString model = settings::whisperModel();
	if (model.isEmpty()) {
		throw Failure(QStringLiteral("KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL isn't set"));
	}
	if (!QFileInfo(model).isFile()) {
		throw Failure(QStringLiteral("the model %1 doesn't exist").arg(QFileInfo(model).fileName()));
	}
	return QFileInfo(model).absoluteFilePath();
}

/// Why a run gave no text; the log says more.
QString reason(const program::Result &result)
{
	switch (result.outcome) {
	case program::Outcome::NotStarted:
		return QStringLiteral("couldn't be started");
	case program::Outcome::Crashed:
		return QStringLiteral("crashed");
	case program::Outcome::TimedOut:
		return QStringLiteral("took too long");
	case program::Outcome::Finished:
		break;
	}
	return QStringLiteral("failed");
}

} // namespace

bool isWanted()
{
	return !settings::whisper().isEmpty() || !settings::whisperModel().isEmpty();
}

QList<Cue> transcribe(const Excerpt &excerpt, const QString &folder)
{
	const QString wanted = settings::whisper().isEmpty() ? QStringLiteral("whisper-cli") : settings::whisper();
	const QString name = QFileInfo(wanted).fileName();
	const QString path = QStandardPaths::findExecutable(wanted);
	if (path.isEmpty()) {
		throw Failure(QStringLiteral("%1 isn't installed").arg(name));
	}
	const QString model = requireModel();
	if (excerpt.video.audioStream < 0) {
		return {};
	}
	const QString sound = QDir(folder).filePath(QStringLiteral("speech.wav"));
	const QString target = QDir(folder).filePath(QStringLiteral("speech"));
	extractSound(excerpt, sound);
	// Any language; lines as short as captions need them, without words cut in two.
	const program::Result result = program::run(
		path,
		{QStringLiteral("-m"), model, QStringLiteral("-f"), sound, QStringLiteral("-l"), QStringLiteral("auto"),
		 QStringLiteral("-ml"), QStringLiteral("40"), QStringLiteral("-sow"), QStringLiteral("-np"),
		 QStringLiteral("-osrt"), QStringLiteral("-of"), target},
		folder, settings::whisperLimitMs());
	// The program answers 0 after some failures; only what it wrote counts.
	QFile file(target + QStringLiteral(".srt"));
	if (!result.succeeded() || !file.open(QIODevice::ReadOnly)) {
		throw Failure(QStringLiteral("%1 %2").arg(name, reason(result)));
	}
	QList<Cue> cues = parseSubtitles(file.readAll());
	// What is no speech comes as "[BLANK_AUDIO]" or "(music)".
	static const QRegularExpression noise(QStringLiteral(R"(^[\[(][^\n]*[\])]$)"));
	cues.removeIf([](const Cue &cue) { return noise.match(cue.text).hasMatch(); });
	return cuesWithin(cues, 0, qRound64(excerpt.lengthSeconds * 1000));
}

} // namespace transcription
