#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>

#include "captions/captions.hpp"
#include "captions/transcription.hpp"
#include "captions/whisper.hpp"
#include "doctor/checks.hpp"
#include "doctor/remedies.hpp"
#include "doctor/report.hpp"
#include "doctor/trial_replay.hpp"
#include "support/events.hpp"
#include "support/files.hpp"
#include "support/subprocess.hpp"
#include "video/ffmpeg.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

namespace {
/// A family's or font's name without spaces and the like, to compare names that are written differently.
QString bare(const QString &name)
{
	static const QRegularExpression marks(u"[^a-z0-9]"_s);
	return name.toLower().remove(marks);
}

/// The name of the font that ffmpeg takes for the font with this key, by its own log; empty when it draws no text.
QString fontTakenFor(const QString &key, const QString &folder)
{
	const Look look{u"gameplay"_s, u"clean"_s, key, u"middle"_s};
	files::write(folder + u"/font.ass"_s, captionScript(look, {{0, 1000, u"Text"_s}}));
	const subprocess::Result result =
		subprocess::run(ffmpeg::locate(u"ffmpeg"_s),
				{u"-hide_banner"_s, u"-nostdin"_s, u"-v"_s, u"info"_s, u"-f"_s, u"lavfi"_s, u"-i"_s,
				 u"color=c=gray:s=270x480"_s, u"-vf"_s, u"ass=font.ass"_s, u"-frames:v"_s, u"1"_s,
				 u"-f"_s, u"null"_s, u"-"_s},
				folder);
	// fontselect: (Inter, 700, 0) -> /usr/share/fonts/Inter.ttc, 3, Inter-Bold
	static const QRegularExpression choice(u"fontselect: \\([^)]*\\) -> .*, ([^,\\n]*)"_s);
	return choice.match(result.errorOutput).captured(1).trimmed();
}

void checkFonts(Report &report, const QString &folder)
{
	for (const QString &key : fontKeys()) {
		const QString family = fontFamily(key);
		const QString taken = fontTakenFor(key, folder);
		if (bare(taken).startsWith(bare(family))) {
			report.ok(u"font %1"_s.arg(family));
		} else {
			report.missing(u"font %1: %2 stands in for it"_s.arg(family, taken.isEmpty() ? u"another one"_s
												     : taken),
				       remedies::font(family, remedies::thisSystem()));
		}
	}
}

QString megabytes(const QString &path)
{
	return u"%1 MB"_s.arg(QFileInfo(path).size() / 1'000'000);
}

/// Has the program hear the trial replay.
void checkHearing(Report &report, const QString &folder)
{
	try {
		QElapsedTimer timer;
		timer.start();
		transcription::transcribe(trialReplay(folder), folder);
		report.ok(u"it listened to a clip on trial in %1 s; half a minute of talk takes about as long"_s.arg(
			static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1));
	} catch (const Failure &failure) {
		report.wrong(u"speech can't be recognised: %1"_s.arg(failure.text()),
			     remedies::model(whisper::modelFolder()));
	}
}
} // namespace

void checkCaptions(Report &report, const QString &folder)
{
	report.heading(u"Captions"_s);
	const remedies::System system = remedies::thisSystem();
	const Look look{u"gameplay"_s, u"clean"_s, fontKeys().first(), u"middle"_s};
	files::write(folder + u"/trial.ass"_s, captionScript(look, {{0, 1000, u"Trial"_s}}));
	if (ffmpeg::canDraw(u"ass=trial.ass"_s, folder)) {
		report.ok(u"ffmpeg draws captions"_s);
		checkFonts(report, folder);
	} else if (fontTakenFor(fontKeys().first(), folder).isEmpty()) {
		report.missing(
			u"this ffmpeg can't draw captions: it has no subtitle filter, or there is no font at all"_s,
			remedies::fullFfmpeg(system) + u'\n' + remedies::someFont(system));
	} else {
		report.missing(u"this ffmpeg draws no captions"_s, remedies::fullFfmpeg(system));
	}
}

void checkSpeech(Report &report, const QString &folder)
{
	report.heading(u"Speech (without it captions come from subtitle files, or tell the time of the clip)"_s);
	const QString program = whisper::program();
	if (program.isEmpty()) {
		report.missing(u"whisper.cpp's program, whisper-cli, isn't there"_s,
			       remedies::whisper(whisper::programFolder(), remedies::thisSystem()));
	} else {
		report.ok(u"whisper.cpp (%1)"_s.arg(program));
	}
	const QString model = whisper::model();
	if (model.isEmpty() || !QFileInfo::exists(model)) {
		report.missing(model.isEmpty() ? u"no speech model in %1"_s.arg(whisper::modelFolder())
					       : u"the speech model %1 doesn't exist"_s.arg(model),
			       remedies::model(whisper::modelFolder()));
	} else if (!whisper::looksLikeModel(model)) {
		report.wrong(u"%1 is no speech model"_s.arg(model), remedies::model(whisper::modelFolder()));
	} else {
		report.ok(u"speech model %1 (%2)"_s.arg(model, megabytes(model)));
		if (!program.isEmpty()) {
			checkHearing(report, folder);
		}
	}
}
