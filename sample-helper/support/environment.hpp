#pragma once

#include <QString>
#include <QStringList>

/// The settings that environment variables or the settings file hold; the variables win. Each call reads them again. A
/// value that makes no sense counts as not set.
namespace environment {
/// The one folder that holds everything this program remembers. It may not exist yet.
QString stateFolder();

/// The settings file. It may not exist.
QString settingsFile();

/// What is wrong with the settings, a sentence for each. Whether files and encoders exist is not looked at.
QStringList problems();

/// The folder that finished Shorts go to. It may not exist yet.
QString outputFolder();

/// True while an upload service that cannot be reached is to be simulated.
bool isOffline();

/// The folder of ffmpeg and ffprobe; empty to search for them.
QString ffmpegFolder();

/// Where the camera is, "x,y,width,height" as fractions of the picture; empty when not set. Not validated.
QString camera();

/// ffmpeg's name of the video encoder to use; empty to find one.
QString encoder();

/// How many clips may be made at the same time.
int clipsAtOnce();

/// How long a clip waits for those that came first.
int queueLimit_ms();

/// How long ffmpeg may take to show what it can do.
int trialLimit_ms();

/// How long ffmpeg may run without any progress.
int stillLimit_ms();

/// whisper.cpp's program for the command line and its model file; empty when not set.
QString whisperProgram();
QString whisperModel();

/// How long a transcription may take.
int whisperLimit_ms();

/// How long a confirmation of the account link takes.
int linkDelay_ms();

/// How long after the request the consent to read the chat counts as given.
int consentDelay_ms();

/// How long a download is made to take.
int downloadDelay_ms();

/// The folder that offers a release to update to. It may not exist.
QString releaseFolder();

/// The version that counts as installed.
QString currentVersion();
} // namespace environment
