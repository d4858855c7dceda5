#pragma once

#include <QList>
#include <QString>

#include <optional>

/// What ffprobe finds out about video files.
namespace ffmpeg {
/// What is known of a video file.
struct Video {
	int videoStream{0};
	/// -1 when the file has no sound.
	int audioStream{-1};
	int audioChannels{0};
	/// The time that the file begins with: not always 0.
	double start_s{0};
	/// By the file's header, which may be missing (0), wrong, or count from 0 instead of start_s.
	double duration_s{0};
	/// By the header as well.
	double audioDuration_s{0};
	/// What ffmpeg calls the way its brightness is stored when that goes beyond ordinary screens (PQ or HLG).
	QString hdrTransfer{};
};

/// A frame as it is stored. Times are the file's own: they count from Video::start_s.
struct Frame {
	double time_s{0};
	/// 0 when unknown, but for the last.
	double duration_s{0};
	/// When it is to be decoded: earlier, if later frames are stored in front of it.
	double decode_s{0};
	/// Can be decoded without any other.
	bool isKeyframe{false};
};

/// Probes a video file; nothing if it is no video. Throws Failure when ffprobe is missing or hangs.
std::optional<Video> lookInto(const QString &path);

/// The frames of a stream in the order they are shown, those with times; from `from_s` on when that is given, as far
/// as the format can be searched. Only the stored data is read, nothing is decoded. Throws Failure when ffprobe is
/// missing or hangs.
QList<Frame> frames(const QString &path, int stream, std::optional<double> from_s = std::nullopt);
} // namespace ffmpeg
