// Stands in for the installer that runs elevated: writes how its window is to be shown (-1: unsaid) and its command
// line, in UTF-16, to "PROGRAM.called" beside itself, waits while a file "PROGRAM.wait" is there, and ends with the
// code in "PROGRAM.code", else 0. It takes nothing from the environment, which an elevated program does not share.

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
