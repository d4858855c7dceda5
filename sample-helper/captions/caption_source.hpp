#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "captions/subtitles.hpp"

struct Excerpt;

/// The captions of an excerpt, with times from its beginning: from a subtitle file beside the replay (same name, .srt
/// or .vtt), else from its speech if a transcriber is configured, else the time of the clip. A failure costs the
/// captions, never the Short; `notes` says so. `folder` is for temporary files.
QList<Cue> captionsOf(const Excerpt &excerpt, const QString &folder, QStringList &notes);
