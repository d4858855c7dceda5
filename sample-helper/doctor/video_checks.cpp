#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>

#include "doctor/checks.hpp"
#include "doctor/remedies.hpp"
#include "doctor/report.hpp"
#include "doctor/trial_replay.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/subprocess.hpp"
#include "video/colours.hpp"
#include "video/encoders.hpp"
#include "video/encoding.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"

using namespace Qt::StringLiterals;

namespace {
/// The version in a line such as "ffmpeg version 7.1.1-1+b1 Copyright …"; empty if the program says no such thing.
QString versionOf(const QString &program)
{
	const subprocess::Result result = subprocess::run(program, {u"-version"_s}, {});
	const QString line = QString::fromUtf8(result.output.split('\n').first());
	return line.contains(u" version "_s) ? line.section(u" version "_s, 1).section(u' ', 0, 0) : QString();
}

bool checkProgram(Report &report, const QString &name)
{
	const QString remedy = remedies::ffmpeg(remedies::thisSystem());
	try {
		const QString path = ffmpeg::locate(name);
		const QString version = versionOf(path);
		if (version.isEmpty()) {
			report.problem(u"%1 (%2) doesn't run"_s.arg(name, path), remedy);
			return false;
		}
		report.ok(u"%1 %2 (%3)"_s.arg(name, version, path));
		return true;
	} catch (const Failure &) {
		const QString folder = environment::ffmpegFolder();
		report.problem(folder.isEmpty()
				       ? u"%1 isn't there"_s.arg(name)
				       : u"%1 isn't in %2, which is set as the folder of ffmpeg"_s.arg(name, folder),
			       remedy);
		return false;
	}
}
} // namespace

bool checkFfmpeg(Report &report)
{
	report.heading(u"Video"_s);
	const bool hasFfmpeg = checkProgram(report, u"ffmpeg"_s);
	return checkProgram(report, u"ffprobe"_s) && hasFfmpeg;
}

void checkEncoders(Report &report)
{
	const QSet<QString> offered = ffmpeg::encoderNames();
	QStringList absent{};
	for (const Encoder &encoder : encoders()) {
		const bool isSoftware = encoder.name == softwareEncoder().name;
		if (!offered.contains(encoder.name)) {
			absent += encoder.name;
		} else if (canEncode(encoder)) {
			report.ok(u"%1 works (%2)"_s.arg(encoder.name, isSoftware ? u"on the processor"_s
										  : u"on the graphics card"_s));
		} else if (isSoftware) {
			report.wrong(u"%1 doesn't work"_s.arg(encoder.name),
				     remedies::fullFfmpeg(remedies::thisSystem()));
		} else {
			report.remark(
				u"%1 isn't usable: no such graphics card, or no driver for it"_s.arg(encoder.name));
		}
	}
	if (absent.contains(softwareEncoder().name)) {
		report.missing(u"this ffmpeg has no %1"_s.arg(softwareEncoder().name),
			       remedies::fullFfmpeg(remedies::thisSystem()));
		absent.removeAll(softwareEncoder().name);
	}
	if (!absent.isEmpty()) {
		report.remark(u"not in this ffmpeg: %1"_s.arg(absent.join(u", "_s)));
	}
}

void checkTrialShort(Report &report, const QString &folder)
{
	try {
		const Excerpt excerpt = trialReplay(folder);
		QStringList notes{};
		QElapsedTimer timer;
		timer.start();
		const Composition composition{ordinaryColours(excerpt.video, notes), layoutGraph(u"gameplay"_s, {})};
		encode(excerpt, composition, folder, folder + u"/trial.mp4"_s, notes);
		report.ok(u"a Short of %1 s was made on trial in %2 s"_s.arg(excerpt.length_s, 0, 'f', 0)
				  .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1));
		for (const QString &note : std::as_const(notes)) {
			report.wrong(u"about that Short: %1"_s.arg(note), {});
		}
	} catch (const Failure &failure) {
		report.problem(u"no Short could be made on trial: %1"_s.arg(failure.text()),
			       remedies::fullFfmpeg(remedies::thisSystem()));
	}
}
