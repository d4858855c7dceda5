#pragma once

#include <windows.h>

#include <vector>

/// Holds keys (virtual key codes) down while it lives, as a keyboard does, for all programs to see.
class PressedKeys {
public:
	explicit PressedKeys(std::vector<WORD> keys);
	~PressedKeys();
	PressedKeys(const PressedKeys &) = delete;
	PressedKeys &operator=(const PressedKeys &) = delete;

private:
	const std::vector<WORD> keys_;
};
