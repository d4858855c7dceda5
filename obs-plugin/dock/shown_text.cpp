#include "dock/shown_text.hpp"

QString shownText(const QString &text)
{
	return text.size() <= longestShownText ? text : text.first(longestShownText) + u'…';
}
