#include <QRegularExpression>
#include <QTextDocument>

#include "dock/shown_text.hpp"

using namespace Qt::StringLiterals;

namespace {
/// A tooltip gets a window as wide as its longest line and as high as all its lines. This bounds the product, in
/// characters: a character takes about 1 kB of that window, and 4 kB on a screen at 200 %.
constexpr qsizetype maxToolTipArea = 5000;

QString cut(const QString &text, qsizetype longest)
{
	if (text.size() <= longest) {
		return text;
	}

	// A character of two code units stays whole.
	const bool splits = text[longest - 1].isHighSurrogate();
	return text.first(longest - (splits ? 1 : 0)) + u'…';
}

constexpr QStringView lineEnds = u"\n\r\v\f\x85\u2028\u2029";

qsizetype toolTipArea(const QString &text)
{
	const QString broken = QString(text).replace(u"<br"_s, u"\n"_s, Qt::CaseInsensitive);
	qsizetype lines = 1;
	qsizetype longest = 0;
	qsizetype width = 0;
	for (const QChar character : broken) {
		if (lineEnds.contains(character)) {
			++lines;
			width = 0;
		} else {
			width += character == u'\t' ? 8 : 1;
			longest = qMax(longest, width);
		}
	}
	return lines * longest;
}
} // namespace

QString shownText(const QString &text)
{
	return cut(text, maxShownText);
}

bool hasHarmlessMarkup(const QString &text)
{
	if (!Qt::mightBeRichText(text)) {
		return true;
	}

	static const QRegularExpression inlineTag(u"</?(?:b|br|code|em|i|s|strong|sub|sup|tt|u)\\s*/?>"_s,
						  QRegularExpression::CaseInsensitiveOption);
	return !QString(text).remove(inlineTag).contains(u'<');
}

QString shownToolTip(const QString &text)
{
	QString shown = shownText(text);
	while (toolTipArea(shown) > maxToolTipArea) {
		shown = cut(shown, shown.size() / 2);
	}
	return hasHarmlessMarkup(shown) ? shown : shown.toHtmlEscaped();
}
