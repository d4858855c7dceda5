#pragma once

#include <QByteArray>
#include <QList>

#include "captions/phrases.hpp"

#include <optional>

/// The words in what whisper.cpp's program writes with -ojf (--output-json-full), without what is no speech, such as
/// "[BLANK_AUDIO]" or "(music)". Nothing if it is no such answer.
std::optional<QList<Word>> spokenWords(const QByteArray &answer);
