#include "captions/transcription.hpp"

#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/subprocess.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace transcription {
namespace {

/// Writes speech.wav. whisper.cpp hears one channel at 16 kHz.
void extractSound(const Excerpt &excerpt, const QString &folder)
{
	const QStringList arguments =
		inputArguments(excerpt) +
		QStringList{QStringLiteral("-map"),      QStringLiteral("0:%1").arg(excerpt.video.audioStream),
			    QStringLiteral("-ac"),       QStringLiteral("1"),
			    QStringLiteral("-ar"),       QStringLiteral("16000"),
			    QStringLiteral("-c:a"),      QStringLiteral("pcm_s16le"),
			    QStringLiteral("-f"),        QStringLiteral("wav"),
			    QStringLiteral("speech.wav")};
	const QString problem = ffmpeg::tryToRun(arguments, folder);
	if (!problem.isEmpty()) {
		// What to do about it would be too much for a note.
		qWarning("%s", qUtf8Printable(problem));
		throw Failure(QStringLiteral("its sound couldn't be read."));
	}
}

QString requireModel()
{
	const QString model = environment::whisperModel();
	if (model.isEmpty()) {
		throw Failure(QStringLiteral("KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL isn't set."));
	}
	if (!QFileInfo(model).isFile()) {
		throw Failure(QStringLiteral("the model %1 doesn't exist.").arg(QFileInfo(model).fileName()));
	}
	return QFileInfo(model).absoluteFilePath();
}

/// Why a run gave no text; the log says more.
QString reason(const subprocess::Result &result)
{
	switch (result.outcome) {
	case subprocess::Outcome::NotStarted:
		return QStringLiteral("couldn't be started");
	case subprocess::Outcome::Crashed:
		return QStringLiteral("crashed");
	case subprocess::Outcome::TimedOut:
		return QStringLiteral("took too long");
	case subprocess::Outcome::Finished:
		break;
	}
	return QStringLiteral("failed");
}

} // namespace

bool isWanted()
{
	return !environment::whisperProgram().isEmpty() || !environment::whisperModel().isEmpty();
}

QList<Cue> transcribe(const Excerpt &excerpt, const QString &folder)
{
	const QString configured = environment::whisperProgram();
	const QString wanted = configured.isEmpty() ? QStringLiteral("whisper-cli") : configured;
	const QString name = QFileInfo(wanted).fileName();
	const QString path = QStandardPaths::findExecutable(wanted);
	if (path.isEmpty()) {
		throw Failure(QStringLiteral("%1 isn't installed.").arg(name));
	}
	const QString model = requireModel();
	if (excerpt.video.audioStream < 0) {
		return {};
	}
	extractSound(excerpt, folder);
	// Any language; lines as short as captions need them, without words cut in two. The names of the files are
	// relative, since a folder may have letters that the program can't open on Windows.
	const subprocess::Result result = subprocess::run(
		path,
		{QStringLiteral("-m"), model, QStringLiteral("-f"), QStringLiteral("speech.wav"), QStringLiteral("-l"),
		 QStringLiteral("auto"), QStringLiteral("-ml"), QStringLiteral("40"), QStringLiteral("-sow"),
		 QStringLiteral("-np"), QStringLiteral("-osrt"), QStringLiteral("-of"), QStringLiteral("speech")},
		folder, environment::whisperLimit_ms());
	// The program answers 0 after some failures; only what it wrote counts.
	QFile file(QDir(folder).filePath(QStringLiteral("speech.srt")));
	if (!result.succeeded() || !file.open(QIODevice::ReadOnly)) {
		throw Failure(QStringLiteral("%1 %2.").arg(name, reason(result)));
	}
	QList<Cue> cues = parseSubtitles(file.readAll());
	// What is no speech comes as "[BLANK_AUDIO]" or "(music)".
	static const QRegularExpression noise(QStringLiteral(R"(^(\[[^\]\n]*\]|\([^)\n]*\))$)"));
	cues.removeIf([](const Cue &cue) { return noise.match(cue.text).hasMatch(); });
	return cuesWithin(cues, 0, qRound64(excerpt.length_s * 1000));
}

} // namespace transcription
