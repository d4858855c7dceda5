#include <QRegularExpression>
#include <QTextDocument>

#include "dock/shown_text.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// A tooltip gets a window as wide as its longest line and as high as all its lines. This bounds the product, in
/// characters: a character takes about 1 kB of that window.
constexpr qsizetype largestToolTipArea = 20'000;

QString cut(const QString &text, qsizetype longest)
{
	if (text.size() <= longest) {
		return text;
	}

	// A character of two code units stays whole.
	const bool splits = text[longest - 1].isHighSurrogate();
	return text.first(longest - (splits ? 1 : 0)) + u'…';
}

qsizetype toolTipArea(const QString &text)
{
	static const QRegularExpression lineBreak(u"[\\n\\r\\v\\f\\x{85}\\x{2028}\\x{2029}]|<br\\s*/?>"_s,
						  QRegularExpression::CaseInsensitiveOption);
	const QList<QStringView> lines = QStringView(text).split(lineBreak);
	const auto longest = std::ranges::max_element(lines, {}, &QStringView::size);
	return lines.size() * longest->size();
}
} // namespace

QString shownText(const QString &text)
{
	return cut(text, longestShownText);
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
	// However its lines break, a text of this length is small enough.
	constexpr qsizetype smallText = 280;
	static_assert((smallText / 2 + 1) * (smallText / 2 + 1) <= largestToolTipArea);

	QString shown = shownText(text);
	if (shown.size() > smallText && toolTipArea(shown) > largestToolTipArea) {
		shown = cut(shown, smallText);
	}
	return hasHarmlessMarkup(shown) ? shown : shown.toHtmlEscaped();
}
