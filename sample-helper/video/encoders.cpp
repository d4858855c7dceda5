#include "video/encoders.hpp"

#include "support/environment.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"

#include <QSet>

namespace {

/// "-one 1 -two 2" as arguments.
QStringList splitArguments(const char *text)
{
	return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Whether a picture of a Short's size goes through: an encoder that is compiled in needs its hardware and driver too.
bool canEncode(const Encoder &encoder)
{
	// That there is no such card is nothing to log with each clip.
	return ffmpeg::succeeds(splitArguments("-v quiet") + encoder.device +
				QStringList{QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
					    QStringLiteral("color=s=%1x%2:r=30").arg(shortWidth_px).arg(shortHeight_px),
					    QStringLiteral("-vf"), encoder.filters, QStringLiteral("-frames:v"),
					    QStringLiteral("1"), QStringLiteral("-c:v"), encoder.name} +
				encoder.quality +
				QStringList{QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")});
}

} // namespace

const QList<Encoder> &encoders()
{
	static const QString plain = QStringLiteral("format=yuv420p");
	static const QString inHardware = QStringLiteral("format=nv12,hwupload");
	static const QList<Encoder> all{
		{QStringLiteral("h264_nvenc"), plain, {}, splitArguments("-preset p4 -rc vbr -cq 23 -b:v 0")},
		{QStringLiteral("h264_qsv"),
		 QStringLiteral("format=nv12"),
		 {},
		 splitArguments("-preset faster -global_quality 23")},
		{QStringLiteral("h264_amf"), plain, {}, splitArguments("-quality balanced -rc cqp -qp_i 22 -qp_p 24")},
		{QStringLiteral("h264_videotoolbox"), plain, {}, splitArguments("-q:v 60")},
		{QStringLiteral("h264_vaapi"), inHardware,
		 splitArguments("-init_hw_device vaapi=gpu -filter_hw_device gpu"),
		 splitArguments("-rc_mode CQP -qp 23")},
		// OBS goes on streaming meanwhile: this takes about two thirds of the processor time of "veryfast".
		{QStringLiteral("libx264"), plain, {}, splitArguments("-preset superfast -bf 0 -crf 22")},
	};
	return all;
}

const Encoder &softwareEncoder()
{
	return encoders().last();
}

const Encoder &chooseEncoder(QStringList &notes)
{
	const QString wanted = environment::encoder();
	if (!wanted.isEmpty()) {
		for (const Encoder &encoder : encoders()) {
			if (encoder.name == wanted) {
				return encoder;
			}
		}
		notes += QStringLiteral("unknown encoder \"%1\", used \"%2\"").arg(wanted, softwareEncoder().name);
		return softwareEncoder();
	}
	const QSet<QString> offered = ffmpeg::encoderNames();
	for (const Encoder &encoder : encoders()) {
		if (encoder.name != softwareEncoder().name && offered.contains(encoder.name) && canEncode(encoder)) {
			return encoder;
		}
	}
	return softwareEncoder();
}
