#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include "captions/transcription.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/subprocess.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"

using namespace Qt::StringLiterals;

namespace transcription {
namespace {

/// Writes speech.wav. whisper.cpp hears one channel at 16 kHz.
void extractSound(const Excerpt &excerpt, const QString &folder)
{
	const QStringList arguments =
		inputArguments(excerpt) + QStringList{u"-map"_s,      u"0:%1"_s.arg(excerpt.video.audioStream),
						      u"-af"_s,       soundCut(excerpt),
						      u"-ac"_s,       u"1"_s,
						      u"-ar"_s,       u"16000"_s,
						      u"-c:a"_s,      u"pcm_s16le"_s,
						      u"-f"_s,        u"wav"_s,
						      u"speech.wav"_s};
	try {
		ffmpeg::run(arguments, folder);
	} catch (const Failure &failure) {
		// What to do about it would be too much for a note.
		qWarning("%s", failure.what());
		throw Failure(u"its sound couldn't be read."_s);
	}
}

QString requireModel()
{
	const QString model = environment::whisperModel();
	if (model.isEmpty()) {
		throw Failure(u"KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL isn't set."_s);
	}
	if (!QFileInfo(model).isFile()) {
		throw Failure(u"the model %1 doesn't exist."_s.arg(QFileInfo(model).fileName()));
	}
	return QFileInfo(model).absoluteFilePath();
}

/// Why a run gave no text; the log says more.
QString reason(const subprocess::Result &result)
{
	switch (result.outcome) {
	case subprocess::Outcome::NotStarted:
		return u"couldn't be started"_s;
	case subprocess::Outcome::Crashed:
		return u"crashed"_s;
	case subprocess::Outcome::TimedOut:
	case subprocess::Outcome::Hung:
		return u"took too long"_s;
	case subprocess::Outcome::Finished:
		break;
	}
	return u"failed"_s;
}

} // namespace

bool isWanted()
{
	return !environment::whisperProgram().isEmpty() || !environment::whisperModel().isEmpty();
}

QList<Cue> transcribe(const Excerpt &excerpt, const QString &folder)
{
	const QString configured = environment::whisperProgram();
	const QString wanted = configured.isEmpty() ? u"whisper-cli"_s : configured;
	const QString name = QFileInfo(wanted).fileName();
	const QString path = QStandardPaths::findExecutable(wanted);
	if (path.isEmpty()) {
		throw Failure(u"%1 isn't installed."_s.arg(name));
	}
	const QString model = requireModel();
	if (excerpt.video.audioStream < 0) {
		return {};
	}
	extractSound(excerpt, folder);
	// Any language; lines as short as captions need them, without words cut in two. The names of the files are
	// relative, since a folder may have letters that the program can't open on Windows.
	const subprocess::Result result =
		subprocess::run(path,
				{u"-m"_s, model, u"-f"_s, u"speech.wav"_s, u"-l"_s, u"auto"_s, u"-ml"_s, u"40"_s,
				 u"-sow"_s, u"-np"_s, u"-osrt"_s, u"-of"_s, u"speech"_s},
				folder, {environment::whisperLimit_ms(), -1, {}});
	// The program answers 0 after some failures; only what it wrote counts.
	QFile file(QDir(folder).filePath(u"speech.srt"_s));
	if (!result.succeeded() || !file.open(QIODevice::ReadOnly)) {
		throw Failure(u"%1 %2."_s.arg(name, reason(result)));
	}
	QList<Cue> cues = parseSubtitles(file.readAll());
	// What is no speech comes as "[BLANK_AUDIO]" or "(music)".
	static const QRegularExpression noise(uR"(^(\[[^\]\n]*\]|\([^)\n]*\))$)"_s);
	cues.removeIf([](const Cue &cue) { return noise.match(cue.text).hasMatch(); });
	return cuesWithin(cues, 0, qRound64(excerpt.length_s * 1000));
}

} // namespace transcription
