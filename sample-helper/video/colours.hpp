#pragma once

#include <QString>
#include <QStringList>

namespace ffmpeg {
struct Video;
}

/// What is done to the colours of a video, as filters.
struct Colours {
	/// For the frames as they are read.
	QString conversion{};
	/// For the finished frames, with a comma in front; may be empty. Filters that compose frames forget what
	/// HDR is marked with.
	QString marks{};
};

/// Brings the frames of a video to what ordinary screens show: 8 bits, and the brightness of HDR mapped to that of
/// BT.709. Where ffmpeg lacks what HDR needs its colours stay and are marked as what they are, which `notes` mentions.
/// Throws Failure when ffmpeg is missing.
Colours ordinaryColours(const ffmpeg::Video &video, QStringList &notes);
