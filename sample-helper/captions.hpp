#pragma once

#include <QString>
#include <QStringList>

struct Look;

/// Keys of the caption styles, fonts and positions in the order to offer them.
QStringList styleKeys();
QStringList fontKeys();
QStringList positionKeys();

/// The file, in ffmpeg's working folder, that a caption's text is read from. A file name of our own in a folder of our
/// own spares both the text and the path from ffmpeg's escaping rules.
QString captionFileName();

/// The text as the look's style writes it (some styles shout).
QString captionText(const Look &look, const QString &text);

/// The ffmpeg filters that draw the text of captionFileName() onto a Short; empty for the style "none".
QString captionFilter(const Look &look);
