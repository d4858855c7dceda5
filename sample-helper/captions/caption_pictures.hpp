#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "captions/subtitles.hpp"

struct Look;

/// Captions as ffmpeg overlays them on a Short; empty without captions.
struct CaptionPictures {
	/// Arguments of a further input, the second.
	QStringList input{};
	/// The filter that overlays that input on the composed picture, including the label that links them.
	QString filter{};
};

/// Draws each cue into a picture file in `folder`, where ffmpeg will run: drawing it again for each frame of the Short
/// would take a third of the time of the encoding. The cues are in order, at most one at any moment. Throws Failure.
CaptionPictures drawCaptions(const Look &look, const QList<Cue> &cues, const QString &folder);
