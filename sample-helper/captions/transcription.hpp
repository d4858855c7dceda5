#pragma once

#include <QList>
#include <QString>

#include "captions/subtitles.hpp"

struct Excerpt;

/// Speech to text by the command line program of whisper.cpp, which is asked for when KESTRUNE_SAMPLE_HELPER_WHISPER or
/// KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL is set.
namespace transcription {

bool isWanted();

/// What is said in the excerpt, with times from its beginning. `folder` is for files in between. Throws Failure.
QList<Cue> transcribe(const Excerpt &excerpt, const QString &folder);

} // namespace transcription
