#pragma once

#include <QLabel>

/// A label for texts from outside. Whatever they hold, it opens no file and leaves the window as wide as it is. Without
/// Q_OBJECT it is a QLabel to the selectors of themes.
class TextLabel : public QLabel {
public:
	explicit TextLabel(const QString &text = {});

	/// Shows `text`, formatted when its markup is harmless, else with its tags. User-interface thread.
	void showText(const QString &text);
};
