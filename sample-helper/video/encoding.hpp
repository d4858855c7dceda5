#pragma once

#include <QString>
#include <QStringList>

struct Excerpt;

/// Encodes the excerpt as an MP4 file for playing while it loads: H.264, and AAC when there is sound. `graph` is
/// the filter graph that begins with [source]; ffmpeg runs in `folder`. Frame rates up to 60 and the loudness stay as
/// they are. An encoder in hardware that gives up is replaced by libx264, which `notes` mentions. Throws Failure.
void encode(const Excerpt &excerpt, const QString &graph, const QString &folder, const QString &target,
	    QStringList &notes);
