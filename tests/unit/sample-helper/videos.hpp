#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

/// Small replays, made by ffmpeg once per test run.
namespace videos {

/// 4 s of 320x180 at 25 fps with sound: red on the left, blue on the right, green where a camera is expected.
QString regions();

/// 6 s with sound: four black, then two white.
QString blackThenWhite();

/// 2 s of moving picture without sound.
QString silent();

/// 1 s of moving picture without sound.
QString atFrameRate(int rate);

/// 2 s of picture with a tone of this amplitude (0 to 1) per channel.
QString withTones(const QList<double> &amplitudes);

struct Details {
	int width{};
	int height{};
	QString videoCodec{};
	QString pixelFormat{};
	/// Frames per second; 0 if unknown.
	double frameRate{};
	QString audioCodec{};
	int audioChannels{};
	double duration_s{};
};

Details details(const QString &path);

/// Brightness of each frame, 0 to 255.
QList<int> brightness(const QString &path);

/// RMS amplitude of each channel.
QList<double> loudness(const QString &path);

/// The first frame as RGB, three bytes per pixel.
QByteArray firstFrame(const QString &path);

/// Whether the index precedes the pictures, so that playback can start while loading.
bool isFastStart(const QString &path);

QByteArray ffmpeg(const QStringList &arguments);

QByteArray checksum(const QString &path);

} // namespace videos
