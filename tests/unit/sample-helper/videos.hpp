#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

/// Small replays, made once per test run with ffmpeg.
namespace videos {

/// Four seconds of 320x180 at 25 frames per second with sound: red on the left, blue on the right, and green where a
/// camera is expected.
QString regions();

/// Six seconds with sound: four black, then two white.
QString blackThenWhite();

/// Two seconds of a moving picture without any sound.
QString silent();

/// One second of a moving picture without sound at this frame rate.
QString atFrameRate(int rate);

/// Two seconds of a picture with tones of these amplitudes (of 1), one per channel.
QString withTones(const QList<double> &amplitudes);

/// One second of plain grey, 203 nits bright, stored as HDR with this transfer function ("smpte2084" or
/// "arib-std-b67").
QString hdr(const char *transfer);

/// What ffprobe tells of a file.
struct Details {
	int width{};
	int height{};
	QString videoCodec{};
	QString pixelFormat{};
	/// ffmpeg's names for how colours are stored.
	QString colourTransfer{};
	QString colourPrimaries{};
	QString colourMatrix{};
	/// Pictures per second; 0 if unknown.
	double frameRate{};
	/// Empty without sound.
	QString audioCodec{};
	int audioChannels{};
	double duration_s{};
};

/// All zero if the file cannot be read.
Details details(const QString &path);

/// The brightness of every frame, 0 to 255.
QList<int> brightness(const QString &path);

/// When the pictures are shown, in order.
QList<double> pictureTimes_s(const QString &path);

/// The effective amplitude of each channel.
QList<double> loudness(const QString &path);

/// The first frame, three bytes (red, green, blue) per pixel.
QByteArray firstFrame(const QString &path);

/// Whether the index lies in front of the pictures, so that playing can begin before all is loaded.
bool isFastStart(const QString &path);

/// Runs ffmpeg and returns its standard output.
QByteArray ffmpeg(const QStringList &arguments);

QByteArray checksum(const QString &path);

} // namespace videos
