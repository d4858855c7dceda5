#pragma once

#include <QString>

/// The user's choices for a Short, as keys of the helper and the preferences file.
struct ClipChoices {
	int length_s{0};
	QString layout{};
	QString style{};
	QString font{};
	QString captionPosition{};
};
