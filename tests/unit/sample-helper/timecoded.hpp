#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Replays whose every frame shows its number, as black and white squares, and that beep at known times: what a Short
/// of them shows and sounds like tells exactly which part it is.
namespace timecoded {
inline constexpr int framesPerSecond = 10;
inline constexpr int length_s = 40;

/// When beeps begin, from the first frame.
QList<double> beeps_s();

/// A replay of these squares and beeps: H.264 with frames stored out of order, and AAC.
struct Kind {
	/// What ffmpeg calls the container.
	const char *format{};
	/// Further options of ffmpeg for it.
	const char *options{""};
	/// The time of the first frame.
	double start_s{0};
	/// A keyframe comes after so many frames.
	int keyInterval{250};
};

/// The options of an MP4 file whose index is spread over it: a crash costs no more than its end.
inline constexpr const char *fragmented = "-movflags frag_keyframe+empty_moov";

/// The path of such a replay; made once per test run.
QString replay(const Kind &kind);

/// What a Short (layout "gameplay", no captions) of such a replay shows and sounds like.
struct Content {
	/// The numbers of its frames, and when they are shown.
	QList<int> numbers{};
	QList<double> times_s{};
	/// When beeps begin.
	QList<double> beeps_s{};
};

Content contentOf(const QString &path);
} // namespace timecoded
