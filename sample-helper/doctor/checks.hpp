#pragma once

#include <QString>

class Report;

/// The parts of --doctor. Each tells the report what it finds. `folder` is for temporary files.

/// Settings that make no sense, in the file or among the environment variables.
void checkSettings(Report &report);

/// The folders and the room that they have.
void checkFolders(Report &report);

/// ffmpeg's programs; false when one is missing, so that there is nothing more to look at.
bool checkFfmpeg(Report &report);

/// Which encoders really encode on this computer.
void checkEncoders(Report &report);

/// Makes a Short, and so has the last word on whether that is possible.
void checkTrialShort(Report &report, const QString &folder);

/// Whether captions can be drawn, and with which fonts.
void checkCaptions(Report &report, const QString &folder);

/// whisper.cpp and its model, by having it hear something.
void checkSpeech(Report &report, const QString &folder);
