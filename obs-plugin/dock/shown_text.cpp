#include "dock/shown_text.hpp"

QString shownText(const QString &text)
{
	if (text.size() <= longestShownText) {
		return text;
	}

	// A character of two code units stays whole.
	const bool splits = text[longestShownText - 1].isHighSurrogate();
	return text.first(longestShownText - (splits ? 1 : 0)) + u'…';
}
