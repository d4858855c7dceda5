#include <QEvent>
#include <QPainter>

#include "dock/long_text_label.hpp"
#include "dock/shown_text.hpp"

bool LongTextLabel::isLong() const
{
	return text().size() > longestShownText;
}

void LongTextLabel::setUp(QLabel &beginning) const
{
	beginning.setTextFormat(textFormat());
	beginning.setWordWrap(wordWrap());
	beginning.setFont(font());
	beginning.setStyleSheet(styleSheet());
	beginning.setAttribute(Qt::WA_NoSystemBackground);
	beginning.setText(shownText(text()));
}

QSize LongTextLabel::sizeHint() const
{
	if (!isLong())
		return QLabel::sizeHint();
	QLabel beginning;
	setUp(beginning);
	return beginning.sizeHint();
}

QSize LongTextLabel::minimumSizeHint() const
{
	if (!isLong())
		return QLabel::minimumSizeHint();
	QLabel beginning;
	setUp(beginning);
	return beginning.minimumSizeHint();
}

int LongTextLabel::heightForWidth(int width_px) const
{
	if (!isLong())
		return QLabel::heightForWidth(width_px);
	QLabel beginning;
	setUp(beginning);
	return beginning.heightForWidth(width_px);
}

bool LongTextLabel::event(QEvent *event)
{
	// To find the link under the mouse QLabel would lay out the whole text.
	switch (event->type()) {
	case QEvent::MouseMove:
	case QEvent::MouseButtonPress:
	case QEvent::MouseButtonRelease:
	case QEvent::MouseButtonDblClick:
	case QEvent::ContextMenu:
		if (isLong()) {
			event->ignore();
			return false;
		}
		break;
	default:
		break;
	}
	return QLabel::event(event);
}

void LongTextLabel::paintEvent(QPaintEvent *event)
{
	if (!isLong()) {
		QLabel::paintEvent(event);
		return;
	}
	QLabel beginning;
	setUp(beginning);
	beginning.resize(size());
	QPainter painter(this);
	beginning.render(&painter, {}, {}, RenderFlags());
}
