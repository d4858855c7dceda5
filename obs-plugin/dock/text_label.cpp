#include "dock/shown_text.hpp"
#include "dock/text_label.hpp"

TextLabel::TextLabel(const QString &text)
	: QLabel(text)
{
	// A label is at least as wide as its longest word, and would widen OBS's main window for it.
	setMinimumWidth(1);
}

void TextLabel::showText(const QString &text)
{
	setTextFormat(hasHarmlessMarkup(text) ? Qt::AutoText : Qt::PlainText);
	setText(text);
}
