#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/// How a streamer gets what is missing: one command or address, for the system that this runs on.
namespace remedies {
enum class System : std::uint8_t { Debian, Fedora, Arch, Windows, Other };

/// The system by the content of /etc/os-release. Ubuntu and its like count as Debian.
System systemOf(const QByteArray &osRelease);

/// The system that this runs on.
System thisSystem();

QString ffmpeg(System system);

/// An ffmpeg with everything, for one that cannot make H.264 video or draw text.
QString fullFfmpeg(System system);

/// Any font at all.
QString someFont(System system);

QString font(const QString &family, System system);

/// whisper.cpp's program. `folder` is where it is found without being installed.
QString whisper(const QString &folder, System system);

/// A speech model, put into `folder`.
QString model(const QString &folder);
} // namespace remedies
