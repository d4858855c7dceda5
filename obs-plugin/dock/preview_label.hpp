#pragma once

#include <QLabel>

/// The helper's picture of what is chosen; hidden until there is one. Without Q_OBJECT it is a QLabel to the selectors
/// of themes.
class PreviewLabel : public QLabel {
public:
	PreviewLabel();

	/// Shows the picture in the file `path`, or hides when it cannot be read.
	void showPicture(const QString &path);
};
