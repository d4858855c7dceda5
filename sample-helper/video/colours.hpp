#pragma once

#include <QString>
#include <QStringList>

namespace ffmpeg {
struct Video;
}

/// The filters that bring the pictures of a video to what ordinary screens show: 8 bits, and the brightness of HDR
/// mapped to that of BT.709. Where ffmpeg lacks what HDR needs its colours stay and are marked as what they are, which
/// `notes` mentions. Throws Failure when ffmpeg is missing.
QString ordinaryColours(const ffmpeg::Video &video, QStringList &notes);
