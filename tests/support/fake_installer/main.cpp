// Stands in for the elevated installer: writes its show-window value (-1: none) and its command line in UTF-16 to
// "PROGRAM.called" beside itself, waits while "PROGRAM.wait" exists, and exits with the code in "PROGRAM.code", else 0.
// It uses no environment variables: an elevated program does not inherit them.

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

int wmain(int, wchar_t **argv)
{
	const std::filesystem::path program = std::filesystem::absolute(argv[0]);
	const auto beside = [&program](const wchar_t *suffix) { return program.wstring() + suffix; };

	STARTUPINFOW start{};
	GetStartupInfoW(&start);
	const int showWindow = (start.dwFlags & STARTF_USESHOWWINDOW) != 0 ? start.wShowWindow : -1;
	const std::wstring called = std::to_wstring(showWindow) + L"\n" + GetCommandLineW();
	std::ofstream(std::filesystem::path(beside(L".called")), std::ios::binary)
		.write(reinterpret_cast<const char *>(called.data()),
		       static_cast<std::streamsize>(called.size() * sizeof(wchar_t)));

	while (std::filesystem::exists(beside(L".wait"))) {
		Sleep(5);
	}

	unsigned code = 0;
	std::ifstream(std::filesystem::path(beside(L".code"))) >> code;
	return static_cast<int>(code);
}
