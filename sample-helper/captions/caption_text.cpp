#include <QList>

#include "captions/caption_text.hpp"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace captiontext {
namespace {
/// How many lines stay clear of the rest of the picture at full size.
constexpr int fullSizeLines = 4;
/// What fits at half size.
constexpr int maxWidth = 160;
constexpr int maxLines = 6;

int widthOfLetter(char32_t letter)
{
	constexpr char32_t firstWideLetter = 0x2e80;
	return letter >= firstWideLetter ? 2 : 1;
}
} // namespace

int widthOf(const QString &text)
{
	int width = 0;
	for (const uint letter : text.toUcs4()) {
		width += widthOfLetter(letter);
	}
	return width;
}

QStringList piecesOf(const QString &text, int maxWidth)
{
	QStringList pieces{};
	int width = 0;
	for (const uint number : text.toUcs4()) {
		const char32_t letter = number;
		width += widthOfLetter(letter);
		if (pieces.isEmpty() || width > maxWidth) {
			pieces += QString();
			width = widthOfLetter(letter);
		}
		pieces.last() += QString::fromUcs4(&letter, 1);
	}
	return pieces;
}

QByteArray makeScript(int width_px, int height_px, const QString &styleLines, const QString &events)
{
	QString text = u"[Script Info]\nScriptType: v4.00+\nPlayResX: %1\nPlayResY: %2\nWrapStyle: 0\n"
		       "ScaledBorderAndShadow: yes\n\n[V4+ Styles]\n"
		       "Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, "
		       "BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, "
		       "BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\n"_s.arg(width_px)
			       .arg(height_px);
	text += styleLines;
	text += u"\n[Events]\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\n"_s;
	text += events;
	return text.toUtf8();
}

QString formatTime(qint64 time_ms)
{
	const qint64 hundredths = time_ms / 10;
	return u"%1:%2:%3.%4"_s.arg(hundredths / 360000)
		.arg(hundredths / 6000 % 60, 2, 10, QChar(u'0'))
		.arg(hundredths / 100 % 60, 2, 10, QChar(u'0'))
		.arg(hundredths % 100, 2, 10, QChar(u'0'));
}

QString breakLines(const QString &text)
{
	QString result{};
	int wordWidth = 0;
	int wholeWidth = 0;
	int lines = 1;
	const QList<uint> letters = text.toUcs4();
	for (const uint number : letters) {
		const char32_t letter = number;
		const int width = widthOfLetter(letter);
		if (letter == U'\n') {
			++lines;
		}
		wholeWidth += width;
		if (wholeWidth > maxWidth || lines > maxLines) {
			return result + u"…"_s;
		}
		if (letter == U' ' || letter == U'\n') {
			wordWidth = 0;
		} else if (wordWidth + width > lineWidth) {
			result += u'\n';
			++lines;
			wordWidth = width;
		} else {
			wordWidth += width;
		}
		result += QString::fromUcs4(&letter, 1);
	}
	return result;
}

double fontScale(const QString &text)
{
	int lines = 0;
	for (const QString &line : text.split(u'\n')) {
		lines += std::max(1, (widthOf(line) + lineWidth - 1) / lineWidth);
	}
	// Smaller letters make lines lower and fewer at once, hence the root.
	return std::max(0.5, std::sqrt(std::min(1.0, static_cast<double>(fullSizeLines) / lines)));
}

QString escape(const QString &text)
{
	QString result{};
	result.reserve(text.size());
	for (const QChar letter : text) {
		if (letter == u'\n') {
			result += u"\\N";
		} else if (letter == u'\\') {
			// The invisible word joiner behind it keeps the backslash from being the start of a command.
			result += u"\\\u2060"_s;
		} else if (letter == u'{' || letter == u'}') {
			result += u'\\' + letter;
		} else if (letter.category() == QChar::Other_Control) {
			// A carriage return would begin a line of the script, a null character would end it.
			result += u' ';
		} else {
			result += letter;
		}
	}
	return result;
}
} // namespace captiontext
