#pragma once

#include <QList>
#include <QString>

#include "captions/subtitles.hpp"

struct Excerpt;

/// Speech to text by the command line program of whisper.cpp, see whisper.hpp for where it is looked for.
namespace transcription {
/// Whether somebody has put a model where it is found, or has set the program.
bool isWanted();

/// What is said in the excerpt, with times from its beginning. `folder` is for temporary files. Throws Failure.
QList<Cue> transcribe(const Excerpt &excerpt, const QString &folder);
} // namespace transcription
