#include "dock/shown_text.hpp"
#include "dock/text_label.hpp"

namespace {
constexpr int minWidth_px = 40;
} // namespace

TextLabel::TextLabel(const QString &text)
	: QLabel(text)
{
	// A label is at least as wide as its longest word, and would widen OBS's main window for it.
	setMinimumWidth(minWidth_px);
}

void TextLabel::showText(const QString &text)
{
	// A new format is applied to the old text first, which may have other markup: so go through plain text.
	setTextFormat(Qt::PlainText);
	setText(text);
	if (hasHarmlessMarkup(text)) {
		setTextFormat(Qt::AutoText);
	}
}
