#include "host/patience.hpp"
#include "pressed_keys.hpp"

#include <ranges>

namespace {
void send(WORD key, DWORD flags)
{
	INPUT input{};
	input.type = INPUT_KEYBOARD;
	input.ki.wVk = key;
	input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
	input.ki.dwFlags = flags;
	// Wine refuses now and then, when its first window is just coming up.
	if (!QTest::qWaitFor([&input] { return SendInput(1, &input, sizeof(input)) == 1; }, patience_ms)) {
		qFatal("cannot press or release key %d: error %lu", int{key}, GetLastError());
	}
}
} // namespace

PressedKeys::PressedKeys(std::vector<WORD> keys)
	: keys_(std::move(keys))
{
	for (const WORD key : keys_) {
		send(key, 0);
	}
}

PressedKeys::~PressedKeys()
{
	for (const WORD key : keys_ | std::views::reverse) {
		send(key, KEYEVENTF_KEYUP);
	}
}
