#include "video/encoding.hpp"

#include "support/events.hpp"
#include "video/encoders.hpp"
#include "video/excerpt.hpp"

#include <QElapsedTimer>

#include <algorithm>

namespace {

QStringList soundArguments(const ffmpeg::Video &video)
{
	if (video.audioStream < 0) {
		return {};
	}
	QStringList arguments{QStringLiteral("-map"), QStringLiteral("0:%1").arg(video.audioStream),
			      QStringLiteral("-c:a"), QStringLiteral("aac"),
			      QStringLiteral("-b:a"), QStringLiteral("160k")};
	// Players want two channels at most. One stays one: ffmpeg would spread it over two at half the power each.
	if (video.audioChannels > 2) {
		arguments << QStringLiteral("-ac") << QStringLiteral("2");
	}
	return arguments;
}

QStringList arguments(const Excerpt &excerpt, const Encoder &encoder, const QString &graph, const QString &target)
{
	const QString wholeGraph = QStringLiteral("[0:%1]format=yuv420p[source];%2,%3[short]")
					   .arg(excerpt.video.videoStream)
					   .arg(graph, encoder.filters);
	return encoder.device + inputArguments(excerpt) +
	       QStringList{QStringLiteral("-filter_complex"), wholeGraph, QStringLiteral("-map"),
			   QStringLiteral("[short]")} +
	       soundArguments(excerpt.video) + QStringList{QStringLiteral("-c:v"), encoder.name} + encoder.quality +
	       QStringList{QStringLiteral("-fpsmax"), QStringLiteral("60"),        QStringLiteral("-map_chapters"),
			   QStringLiteral("-1"),      QStringLiteral("-movflags"), QStringLiteral("+faststart"),
			   QStringLiteral("-f"),      QStringLiteral("mp4"),       ffmpeg::fileAddress(target)};
}

void encodeWith(const Encoder &encoder, const Excerpt &excerpt, const QString &graph, const QString &folder,
		const QString &target)
{
	QElapsedTimer timer;
	timer.start();
	ffmpeg::run(arguments(excerpt, encoder, graph, target), folder);
	const double elapsed_s = std::max(0.001, static_cast<double>(timer.elapsed()) / 1000);
	qInfo("%s encoded %.1f s in %.1f s (%.2f times real time)", qUtf8Printable(encoder.name), excerpt.length_s,
	      elapsed_s, excerpt.length_s / elapsed_s);
}

} // namespace

void encode(const Excerpt &excerpt, const QString &graph, const QString &folder, const QString &target,
	    QStringList &notes)
{
	const Encoder &encoder = chooseEncoder(notes);
	if (encoder.name == softwareEncoder().name) {
		encodeWith(encoder, excerpt, graph, folder, target);
		return;
	}
	try {
		encodeWith(encoder, excerpt, graph, folder, target);
	} catch (const Failure &failure) {
		qWarning("%s: %s", qUtf8Printable(encoder.name), failure.what());
		encodeWith(softwareEncoder(), excerpt, graph, folder, target);
		notes += QStringLiteral("%1 failed, used %2").arg(encoder.name, softwareEncoder().name);
	}
}
