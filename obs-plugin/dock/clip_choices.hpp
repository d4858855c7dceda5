#pragma once

#include <QString>

/// What the user chose for a Short, as the helper and the preferences file name it.
struct ClipChoices {
	int length_s{0};
	QString layout{};
	QString style{};
	QString font{};
	QString captionPosition{};
};
