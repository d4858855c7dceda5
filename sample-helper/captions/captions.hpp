#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "captions/subtitles.hpp"

struct Look;

/// Keys of the caption styles, fonts and positions in the order to offer them.
QStringList styleKeys();
QStringList fontKeys();
QStringList positionKeys();

/// The name by which a font is installed.
QString fontFamily(const QString &key);

/// False for the style that shows no captions.
bool hasCaptions(const Look &look);

/// How far below the upper edge of a Short the middle of its captions is.
int captionMiddle_px(const Look &look);

/// A script for ffmpeg's "ass" filter that shows the cues on a Short in the chosen style, font and position. Nothing in
/// a cue's text can do more than be shown; long texts are set smaller, very long ones cut off.
QByteArray captionScript(const Look &look, const QList<Cue> &cues);
