#pragma once

#include <QString>
#include <QStringList>

#include "captions/caption_pictures.hpp"
#include "video/colours.hpp"

struct Excerpt;

/// How the frames of a replay become those of a Short, as filters.
struct Composition {
	Colours colours{};
	/// Begins with [source]; see layoutGraph().
	QString layout{};
	CaptionPictures captions{};
};

/// How much of the replay could be read.
struct Reading {
	/// How many of the excerpt's frames; 0 when that is unknown.
	qsizetype frames{0};
	/// Whether ffmpeg complained of what it read.
	bool isDoubtful{false};
};

/// Encodes the excerpt as an MP4 file for playing while it loads: H.264, and AAC when there is sound. ffmpeg runs in
/// `folder`. Frame rates up to 60 and the loudness stay as they are. An encoder in hardware that gives up, hangs or
/// writes what cannot be played is replaced by libx264, which `notes` mentions. Throws Failure.
Reading encode(const Excerpt &excerpt, const Composition &composition, const QString &folder, const QString &target,
	       QStringList &notes);
