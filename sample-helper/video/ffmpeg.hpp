#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

/// Everything that is done through the programs ffmpeg and ffprobe. All calls wait for the program to end, and kill one
/// that nothing has come of for environment::stillLimit_ms().
namespace ffmpeg {
/// The path of ffmpeg or ffprobe. Throws Failure when it is missing.
QString locate(const QString &name);

/// The address by which ffmpeg opens exactly this file, whatever characters its path holds.
QString fileAddress(const QString &path);

/// What ffprobe prints (the last 16 MiB of it), if only until it fails. Throws Failure when it is missing or hangs.
QByteArray ask(const QStringList &arguments);

/// The names of the encoders that this ffmpeg was built with; none if it fails or takes longer than
/// environment::trialLimit_ms(). Throws Failure when it is missing.
QSet<QString> encoderNames();

/// Whether ffmpeg can do this within environment::trialLimit_ms(): a broken driver may hang for ever. Throws Failure
/// when ffmpeg is missing.
bool succeeds(const QStringList &arguments);

/// Whether the filter leaves a mark on an empty picture: some builds lack the one for captions, some systems have no
/// font for it. False as well after environment::trialLimit_ms(). Throws Failure when ffmpeg is missing.
bool canDraw(const QString &filter, const QString &workingFolder);

/// Runs ffmpeg in `workingFolder`; the last argument is the file that it writes. Returns whether it complained of what
/// it read, though it went on. Throws Failure with a sentence that a streamer understands.
bool run(const QStringList &arguments, const QString &workingFolder);
} // namespace ffmpeg
