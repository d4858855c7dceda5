#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include "captions/phrases.hpp"
#include "captions/spoken_words.hpp"
#include "captions/transcription.hpp"
#include "captions/whisper.hpp"
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

/// Throws Failure.
QString requireProgram()
{
	const QString program = whisper::program();
	if (program.isEmpty()) {
		const QString wanted = environment::whisperProgram();
		throw Failure(u"%1 isn't installed."_s.arg(wanted.isEmpty() ? u"whisper-cli"_s
									    : QFileInfo(wanted).fileName()));
	}
	return program;
}

/// Throws Failure.
QString requireModel()
{
	const QString model = whisper::model();
	if (model.isEmpty()) {
		throw Failure(u"there is no speech model in %1."_s.arg(whisper::modelFolder()));
	}
	if (!QFileInfo(model).isFile()) {
		throw Failure(u"the model %1 doesn't exist."_s.arg(QFileInfo(model).fileName()));
	}
	if (!whisper::looksLikeModel(model)) {
		throw Failure(u"%1 is no speech model."_s.arg(QFileInfo(model).fileName()));
	}
	return model;
}

/// Has the program write what it hears in speech.wav to speech.json. The log tells how long that takes.
subprocess::Result listen(const QString &program, const QString &model, const Excerpt &excerpt, const QString &folder)
{
	const QString name = QFileInfo(program).fileName();
	qInfo("%s is listening to %.0f s of sound", qUtf8Printable(name), excerpt.length_s);
	QElapsedTimer timer;
	timer.start();
	// Any language; everything it knows, in JSON, with a time for each word. The names of the files are relative,
	// since a folder may have letters that the program can't open on Windows.
	const subprocess::Result result = subprocess::run(program,
							  {u"-m"_s, model, u"-f"_s, u"speech.wav"_s, u"-l"_s, u"auto"_s,
							   u"-np"_s, u"-ojf"_s, u"-of"_s, u"speech"_s},
							  folder, {environment::whisperLimit_ms(), -1, {}});
	qInfo("%s ended after %.1f s", qUtf8Printable(name), static_cast<double>(timer.elapsed()) / 1000);
	return result;
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
	return !environment::whisperProgram().isEmpty() || !whisper::model().isEmpty();
}

QList<Cue> transcribe(const Excerpt &excerpt, const QString &folder)
{
	const QString program = requireProgram();
	const QString model = requireModel();
	if (excerpt.video.audioStream < 0) {
		return {};
	}
	extractSound(excerpt, folder);
	const subprocess::Result result = listen(program, model, excerpt, folder);
	// The program answers 0 after some failures; only what it wrote counts.
	QFile file(QDir(folder).filePath(u"speech.json"_s));
	std::optional<QList<Word>> words{};
	if (result.succeeded() && file.open(QIODevice::ReadOnly)) {
		words = spokenWords(file.readAll());
	}
	if (!words) {
		throw Failure(u"%1 %2."_s.arg(QFileInfo(program).fileName(), reason(result)));
	}
	return phrases::phrasesOf(*words, qRound64(excerpt.length_s * 1000));
}
} // namespace transcription
