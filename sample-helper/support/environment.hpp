#pragma once

#include <QString>

/// The settings that environment variables hold. Each call reads its variable again.
namespace environment {

/// The one folder that holds everything this program remembers. It may not exist yet.
QString stateFolder();

/// The folder that finished Shorts go to. It may not exist yet.
QString outputFolder();

/// True while an upload service that cannot be reached is to be simulated.
bool isOffline();

/// The folder of ffmpeg and ffprobe; empty to search for them.
QString ffmpegFolder();

/// Where the camera is, "x,y,width,height" as fractions of the picture; empty when not set. Anything may stand there.
QString camera();

/// ffmpeg's name of the video encoder to use; empty to find one.
QString encoder();

/// How long ffmpeg may take to show what it can do.
int trialLimit_ms();

/// How long ffmpeg may go on without anything coming of it.
int stillLimit_ms();

/// whisper.cpp's program for the command line and its model file; empty when not set.
QString whisperProgram();
QString whisperModel();

/// How long a transcription may take.
int whisperLimit_ms();

/// How long a confirmation of the account link takes.
int linkDelay_ms();

/// How long after the question the consent to read the chat counts as given.
int consentDelay_ms();

/// How long a download is stretched to.
int downloadDelay_ms();

/// The folder that offers a release to update to. It may not exist.
QString releaseFolder();

/// The version that counts as installed.
QString currentVersion();

} // namespace environment
