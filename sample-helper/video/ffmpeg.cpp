#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/subprocess.hpp"
#include "video/ffmpeg.hpp"

using namespace Qt::StringLiterals;

namespace ffmpeg {
namespace {
constexpr QLatin1StringView addressPrefix("file:");

subprocess::Result execute(const QString &name, const QStringList &arguments, const QString &workingFolder,
			   const subprocess::Limits &limits)
{
	const subprocess::Result result = subprocess::run(locate(name), arguments, workingFolder, limits);
	if (result.outcome == subprocess::Outcome::NotStarted) {
		throw Failure(u"%1 couldn't be started. Install ffmpeg again."_s.arg(name));
	}
	return result;
}

/// Runs ffmpeg with the arguments that every run of it needs in front.
subprocess::Result execute(const QStringList &arguments, const QString &workingFolder, const subprocess::Limits &limits)
{
	const QStringList common{u"-hide_banner"_s, u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s};
	return execute(u"ffmpeg"_s, common + arguments, workingFolder, limits);
}

subprocess::Limits trialLimits()
{
	return {environment::trialLimit_ms(), -1, {}};
}

/// Limits for a run that writes `file`.
subprocess::Limits writingLimits(const QString &file, const QString &workingFolder)
{
	const QString path = file.startsWith(addressPrefix) ? file.sliced(addressPrefix.size()) : file;
	return {-1, environment::stillLimit_ms(), QDir(workingFolder).absoluteFilePath(path)};
}

QString hungText(const QString &name)
{
	return u"%1 hung, nothing came of it for %2 s. Clip again."_s.arg(name).arg(environment::stillLimit_ms() /
										    1000.0);
}

/// The last line without what means nothing to a streamer: "[out#0/mp4 @ 0x55d0c0ffee00]" in front, the temporary name
/// of the file that was written, a full stop or two.
QString lastWords(const QString &errorOutput, const QString &writtenFile)
{
	static const QRegularExpression origin(uR"(^(\[[^\]]*\]\s*)+)"_s);
	static const QRegularExpression stops(u"[\\s.!]+$"_s);
	QString line = errorOutput.section(u'\n', -1);
	line.remove(origin);
	line.replace(writtenFile, u"its output"_s);
	line.remove(stops);
	return line.left(200);
}

/// ffmpeg's own messages, put so that a streamer knows what to do.
QString explain(const subprocess::Result &result, const QString &writtenFile)
{
	if (result.outcome == subprocess::Outcome::Hung) {
		return hungText(u"ffmpeg"_s);
	}
	const QString &errorOutput = result.errorOutput;
	for (const char *text : {"No space left on device", "File too large", "Disk quota exceeded"}) {
		if (errorOutput.contains(QLatin1String(text))) {
			return u"the disk is full. Free some space, then clip again."_s;
		}
	}
	if (errorOutput.contains(u"Unknown encoder")) {
		return u"this ffmpeg can't make H.264 video. Install a full build of ffmpeg."_s;
	}
	if (errorOutput.contains(u"received no packets")) {
		return u"ffmpeg found no frames in the replay."_s;
	}
	const QString words = lastWords(errorOutput, writtenFile);
	return words.isEmpty() ? u"ffmpeg stopped unexpectedly."_s : u"ffmpeg failed: %1."_s.arg(words);
}
} // namespace

QString locate(const QString &name)
{
	const QString folder = environment::ffmpegFolder();
	QString program = folder.isEmpty() ? QStandardPaths::findExecutable(name)
					   : QStandardPaths::findExecutable(name, {folder});
	if (program.isEmpty() && folder.isEmpty()) {
		program = QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
	}
	if (program.isEmpty()) {
		throw Failure(u"%1 isn't installed. Install ffmpeg, then clip again."_s.arg(name));
	}
	return program;
}

QString fileAddress(const QString &path)
{
	return addressPrefix + QFileInfo(path).absoluteFilePath();
}

QByteArray ask(const QStringList &arguments)
{
	const QString name = u"ffprobe"_s;
	const subprocess::Result result =
		execute(name, QStringList{u"-v"_s, u"error"_s} + arguments, {}, {-1, environment::stillLimit_ms(), {}});
	if (result.outcome == subprocess::Outcome::Hung) {
		throw Failure(hungText(name));
	}
	return result.output;
}

QSet<QString> encoderNames()
{
	QSet<QString> names{};
	const subprocess::Result result = execute({u"-encoders"_s}, {}, trialLimits());
	if (!result.succeeded()) {
		return names;
	}
	for (const QByteArray &line : result.output.split('\n')) {
		// Flags, name, description.
		names += QString::fromUtf8(line.simplified().split(' ').value(1));
	}
	return names;
}

bool succeeds(const QStringList &arguments)
{
	return execute(arguments, {}, trialLimits()).succeeded();
}

bool canDraw(const QString &filter, const QString &workingFolder)
{
	const subprocess::Result result =
		execute({u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=c=gray:s=270x480"_s, u"-vf"_s,
			 filter + u",format=gray"_s, u"-frames:v"_s, u"1"_s, u"-f"_s, u"rawvideo"_s, u"-"_s},
			workingFolder, trialLimits());
	const QByteArray &picture = result.output;
	return result.succeeded() && !picture.isEmpty() && picture.count(picture.front()) != picture.size();
}

bool run(const QStringList &arguments, const QString &workingFolder)
{
	const QString &file = arguments.last();
	const subprocess::Result result = execute(arguments, workingFolder, writingLimits(file, workingFolder));
	if (!result.succeeded()) {
		throw Failure(explain(result, file));
	}
	// "[vist#0:0/h264 @ 0x55d0c0ffee00] ...": a stream of video, of audio, or the file itself; the last is of
	// ffmpeg 5.
	static const QRegularExpression complaint(uR"(\[(vist|aist|in)#|Error while decoding stream)"_s);
	return complaint.match(result.errorOutput).hasMatch();
}
} // namespace ffmpeg
