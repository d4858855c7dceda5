#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

struct Look;

/// Everything that is done through the programs ffmpeg and ffprobe. All calls wait for the program to end.
namespace ffmpeg {

/// What is known of a video file.
struct Video {
	int videoStream{};
	/// -1 when the file has no sound.
	int audioStream{-1};
	double durationSeconds{};
};

/// The address by which ffmpeg opens exactly this file, whatever characters its path holds.
QString fileAddress(const QString &path);

/// Looks into a video file. Throws Failure when ffprobe is missing or the file is no video.
Video probe(const QString &path);

/// Whether this ffmpeg can draw the look's caption: some builds lack the filter, some systems have no font. The text
/// must be in captionFileName() in `workingFolder`.
bool canDrawCaption(const Look &look, const QString &workingFolder);

/// Runs ffmpeg in `workingFolder`; throws Failure, worded by what went wrong, unless it succeeds.
void run(const QStringList &arguments, const QString &workingFolder);

} // namespace ffmpeg
