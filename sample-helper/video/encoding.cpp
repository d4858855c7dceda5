#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include "support/events.hpp"
#include "video/completeness.hpp"
#include "video/encoders.hpp"
#include "video/encoding.hpp"
#include "video/excerpt.hpp"
#include "video/ffmpeg.hpp"
#include "video/progress.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1StringView progressFile("progress.txt");

QStringList soundArguments(const ffmpeg::Video &video)
{
	if (video.audioStream < 0) {
		return {};
	}
	QStringList arguments{u"-map"_s, u"[sound]"_s, u"-c:a"_s, u"aac"_s, u"-b:a"_s, u"160k"_s};
	// Players want two channels at most. One stays one: ffmpeg would spread it over two at half the power each.
	if (video.audioChannels > 2) {
		arguments << u"-ac"_s << u"2"_s;
	}
	return arguments;
}

/// The way from the file's frames and sound to those of the Short.
QString wholeGraph(const Excerpt &excerpt, const Encoder &encoder, const Composition &composition)
{
	const auto &[conversion, marks] = composition.colours;
	QString graph = u"[0:%1]%2,%3[source];%4%5%6,%7[short]"_s.arg(excerpt.video.videoStream)
				.arg(videoCut(excerpt), conversion, composition.layout, composition.captions.filter,
				     marks, encoder.filters);
	if (excerpt.video.audioStream >= 0) {
		graph += u";[0:%1]%2[sound]"_s.arg(excerpt.video.audioStream).arg(soundCut(excerpt));
	}
	return graph;
}

QStringList arguments(const Excerpt &excerpt, const Encoder &encoder, const Composition &composition,
		      const QString &target)
{
	// Each packet is written at once, so that a file that does not grow means that nothing goes on.
	return encoder.device + inputArguments(excerpt) + composition.captions.input +
	       QStringList{u"-filter_complex"_s, wholeGraph(excerpt, encoder, composition), u"-map"_s, u"[short]"_s} +
	       soundArguments(excerpt.video) + QStringList{u"-c:v"_s, encoder.name} + encoder.quality +
	       QStringList{u"-fpsmax"_s,
			   u"60"_s,
			   u"-map_chapters"_s,
			   u"-1"_s,
			   u"-flush_packets"_s,
			   u"1"_s,
			   u"-movflags"_s,
			   u"+faststart"_s,
			   u"-progress"_s,
			   progressFile,
			   u"-f"_s,
			   u"mp4"_s,
			   ffmpeg::fileAddress(target)};
}

/// The last number that ffmpeg reported for `name`, in lines such as "frame=250".
qsizetype lastNumber(const QByteArray &progress, const QByteArray &name)
{
	const qsizetype at = progress.lastIndexOf('\n' + name + '=');
	return at < 0 ? 0 : progress.sliced(at + name.size() + 2).split('\n').first().trimmed().toLongLong();
}

/// How many frames of the replay could be read: those that were encoded, but for those that ffmpeg repeated or left
/// out to keep the frame rate.
qsizetype framesRead(const QString &folder)
{
	QFile file(QDir(folder).filePath(progressFile));
	if (!file.open(QIODevice::ReadOnly)) {
		return 0;
	}
	const QByteArray progress = '\n' + file.readAll();
	return lastNumber(progress, "frame") - lastNumber(progress, "dup_frames") + lastNumber(progress, "drop_frames");
}

Reading encodeWith(const Encoder &encoder, const Excerpt &excerpt, const Composition &composition,
		   const QString &folder, const QString &target)
{
	QElapsedTimer timer;
	timer.start();
	const ProgressLog progress(folder + u'/' + progressFile, excerpt.length_s);
	const bool isDoubtful = ffmpeg::run(arguments(excerpt, encoder, composition, target), folder);
	const double elapsed_s = std::max(0.001, static_cast<double>(timer.elapsed()) / 1000);
	qInfo("%s encoded %.1f s in %.1f s (%.2f times real time)", qUtf8Printable(encoder.name), excerpt.length_s,
	      elapsed_s, excerpt.length_s / elapsed_s);
	return {framesRead(folder), isDoubtful};
}
} // namespace

Reading encode(const Excerpt &excerpt, const Composition &composition, const QString &folder, const QString &target,
	       QStringList &notes)
{
	const Encoder &encoder = chooseEncoder(notes);
	if (encoder.name == softwareEncoder().name) {
		return encodeWith(encoder, excerpt, composition, folder, target);
	}
	try {
		const Reading reading = encodeWith(encoder, excerpt, composition, folder, target);
		if (isPlayable(target, excerpt)) {
			return reading;
		}
		qWarning("%s: made no video that can be played", qUtf8Printable(encoder.name));
	} catch (const Failure &failure) {
		qWarning("%s: %s", qUtf8Printable(encoder.name), failure.what());
	}
	const Reading reading = encodeWith(softwareEncoder(), excerpt, composition, folder, target);
	notes += u"%1 failed, used %2"_s.arg(encoder.name, softwareEncoder().name);
	return reading;
}
