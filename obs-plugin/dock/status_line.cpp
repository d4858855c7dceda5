#include "dock/shown_text.hpp"
#include "dock/status_line.hpp"

using namespace Qt::StringLiterals;

StatusLine::StatusLine()
{
	setObjectName(u"status"_s);
	setWordWrap(true);
	setStatus(u"Starting…"_s, false);
}

void StatusLine::setStatus(const QString &text, bool error)
{
	showText(shownText(text));
	const QString style = error ? u"color:#ff6b81"_s : u"color:#8a90a6"_s;
	// Setting a style sheet is slow even if it does not change.
	if (styleSheet() != style) {
		setStyleSheet(style);
	}
}
