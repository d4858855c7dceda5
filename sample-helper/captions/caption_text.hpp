#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Text and times as the script format of ffmpeg's "ass" filter (Advanced SubStation Alpha) wants them.
namespace captiontext {
/// About as much fits on a line at full size.
inline constexpr int lineWidth = 16;

/// How wide a text is, counted in Latin letters. East Asian ones and emoji count double.
int widthOf(const QString &text);

/// The text in pieces that are no wider than this.
QStringList piecesOf(const QString &text, int maxWidth);

/// A whole script for a picture of this size from its style lines and its event lines.
QByteArray makeScript(int width_px, int height_px, const QString &styleLines, const QString &events);

/// A time such as 0:01:02.50; scripts count hundredths of a second.
QString formatTime(qint64 time_ms);

/// The text with line breaks in words too wide for a Short (addresses, languages without blanks), and cut off with an
/// ellipsis where it would fill the picture.
QString breakLines(const QString &text);

/// By how much a text must be set smaller to fit into a few lines, 0.5 to 1.
double fontScale(const QString &text);

/// The text for an event line: shown letter by letter, whatever commands it looks like.
QString escape(const QString &text);
} // namespace captiontext
