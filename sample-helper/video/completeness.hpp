#pragma once

#include <QString>
#include <QStringList>

struct Excerpt;
struct Reading;

/// Whether a file holds the whole excerpt as a Short should, so that it can be played: an encoder that ends without an
/// error may still have written rubbish. Throws Failure when ffprobe is missing or hangs.
bool isPlayable(const QString &file, const Excerpt &excerpt);

/// Mentions in `notes` what a Short lacks of the `asked_s` seconds that were asked for: a viewer would see it, a
/// streamer should know before. Throws Failure when it has no frames.
void noteWhatIsMissing(const QString &file, const Excerpt &excerpt, const Reading &reading, int asked_s,
		       QStringList &notes);
