#pragma once

#include <QLabel>

/// A label for texts from outside. Qt lays a text out as a whole whenever a label changes, which takes a minute for one
/// of a megabyte; of a text longer than longestShownText this label lays out and paints the beginning alone.
/// Without Q_OBJECT it is a QLabel by name too, for the selectors of themes.
class LongTextLabel : public QLabel {
public:
	using QLabel::QLabel;

	QSize sizeHint() const override;
	QSize minimumSizeHint() const override;
	int heightForWidth(int width_px) const override;

protected:
	bool event(QEvent *event) override;
	void paintEvent(QPaintEvent *event) override;

private:
	bool isLong() const;
	/// Makes `beginning` a label like this one with the beginning of the text.
	void setUp(QLabel &beginning) const;
};
