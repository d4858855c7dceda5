#pragma once

#include <QLabel>

class QJsonObject;

/// The helper's picture of what is chosen; hidden until there is one. Without Q_OBJECT it is a QLabel to the selectors
/// of themes.
class PreviewLabel : public QLabel {
public:
	PreviewLabel();

	/// Shows the picture of a "preview" event, or hides when it cannot be read. Other events change nothing.
	void showPreview(const QJsonObject &event);
};
