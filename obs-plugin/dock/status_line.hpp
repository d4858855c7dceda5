#pragma once

#include <QLabel>

/// The dock's one line for messages to the user. Without Q_OBJECT it is a QLabel to the selectors of themes.
class StatusLine : public QLabel {
public:
	StatusLine();

	/// Shows `text`, in the error colour when `error` is set, else in the information colour. User-interface
	/// thread.
	void setStatus(const QString &text, bool error);
};
