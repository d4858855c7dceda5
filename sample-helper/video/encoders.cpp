#include <QSet>

#include "support/environment.hpp"
#include "video/encoders.hpp"
#include "video/ffmpeg.hpp"
#include "video/layouts.hpp"

using namespace Qt::StringLiterals;

namespace {
/// "-one 1 -two 2" as arguments.
QStringList splitArguments(const char *text)
{
	return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}
} // namespace

const QList<Encoder> &encoders()
{
	static const QString plain = u"format=yuv420p"_s;
	static const QString inHardware = u"format=nv12,hwupload"_s;
	static const QList<Encoder> all{
		{u"h264_nvenc"_s, plain, {}, splitArguments("-preset p4 -rc vbr -cq 23 -b:v 0")},
		{u"h264_qsv"_s, u"format=nv12"_s, {}, splitArguments("-preset faster -global_quality 23")},
		{u"h264_amf"_s, plain, {}, splitArguments("-quality balanced -rc cqp -qp_i 22 -qp_p 24")},
		{u"h264_videotoolbox"_s, plain, {}, splitArguments("-q:v 60")},
		{u"h264_vaapi"_s, inHardware, splitArguments("-init_hw_device vaapi=gpu -filter_hw_device gpu"),
		 splitArguments("-rc_mode CQP -qp 23")},
		// OBS goes on streaming meanwhile: this takes about two thirds of the processor time of "veryfast".
		{u"libx264"_s, plain, {}, splitArguments("-preset superfast -bf 0 -crf 22")},
	};
	return all;
}

const Encoder &softwareEncoder()
{
	return encoders().last();
}

bool canEncode(const Encoder &encoder)
{
	// A missing card is not worth a log line for every clip.
	return ffmpeg::succeeds(splitArguments("-v quiet") + encoder.device +
				QStringList{u"-f"_s, u"lavfi"_s, u"-i"_s,
					    u"color=s=%1x%2:r=30"_s.arg(shortWidth_px).arg(shortHeight_px), u"-vf"_s,
					    encoder.filters, u"-frames:v"_s, u"1"_s, u"-c:v"_s, encoder.name} +
				encoder.quality + QStringList{u"-f"_s, u"null"_s, u"-"_s});
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
		notes += u"unknown encoder \"%1\", used \"%2\""_s.arg(wanted, softwareEncoder().name);
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
