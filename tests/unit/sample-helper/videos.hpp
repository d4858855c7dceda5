#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

/// Small replays, made by ffmpeg once per test run.
namespace videos {
/// Of these replays, and so of their Shorts: encoding is what tests take time for.
inline constexpr int framesPerSecond = 10;

/// 4 s of 320x180 with sound: red on the left, blue on the right, green where a camera is expected.
QString regions();

/// 6 s with sound: four black, then two white.
QString blackThenWhite();

/// 2 s of moving picture without sound.
QString silent();

/// 1 s of moving picture without sound.
QString atFrameRate(int rate);

/// 2 s of picture with a tone of this amplitude (0 to 1) per channel.
QString withTones(const QList<double> &amplitudes);

/// 1 s of plain grey at 203 nits, as HDR with this transfer function ("smpte2084" or "arib-std-b67").
QString hdr(const char *transfer);

struct Details {
	int width{0};
	int height{0};
	QString videoCodec{};
	QString pixelFormat{};
	/// ffmpeg's names for how colours are stored.
	QString colourTransfer{};
	QString colourPrimaries{};
	QString colourMatrix{};
	/// Frames per second; 0 if unknown.
	double frameRate{0};
	QString audioCodec{};
	int audioChannels{0};
	double duration_s{0};
};

Details details(const QString &path);

/// Brightness of each frame, 0 to 255.
QList<int> brightness(const QString &path);

/// When each frame is shown, in order.
QList<double> frameTimes_s(const QString &path);

/// RMS amplitude of each channel.
QList<double> loudness(const QString &path);

/// The first frame as RGB, three bytes per pixel.
QByteArray firstFrame(const QString &path);

/// Whether the index precedes the frames, so that playback can start while loading.
bool isFastStart(const QString &path);

QByteArray ffmpeg(const QStringList &arguments);

QByteArray checksum(const QString &path);
} // namespace videos
