#pragma once

#include "dock/text_label.hpp"

/// The dock's one line for messages to the user. Whoever handles an event decides what it says: `git grep setStatus`.
class StatusLine : public TextLabel {
public:
	StatusLine();

	/// Shows `text`, in the error colour when `error` is set, else in the information colour. User-interface
	/// thread.
	void setStatus(const QString &text, bool error);
};
