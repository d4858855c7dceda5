#include "fake_helper/system.hpp"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Qt::StringLiterals;

QJsonObject windowState()
{
	STARTUPINFOW start{};
	GetStartupInfoW(&start);
	return {{u"console"_s, GetConsoleWindow() != nullptr},
		{u"showWindowSet"_s, (start.dwFlags & STARTF_USESHOWWINDOW) != 0},
		{u"showWindow"_s, start.wShowWindow}};
}

void append(const QString &path, const QByteArray &bytes)
{
	const std::wstring name = path.toStdWString();
	HANDLE file = INVALID_HANDLE_VALUE;
	// Others may read meanwhile; writers wait.
	while (file == INVALID_HANDLE_VALUE) {
		file = CreateFileW(name.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
				   FILE_ATTRIBUTE_NORMAL, nullptr);
		if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_SHARING_VIOLATION) {
			std::abort();
		}
	}
	DWORD written = 0;
	if (!WriteFile(file, bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
		std::abort();
	}
	CloseHandle(file);
}

void writeBytesUnchanged()
{
	_setmode(_fileno(stdout), _O_BINARY);
	_setmode(_fileno(stderr), _O_BINARY);
}

void crash()
{
	TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_ACCESS_VIOLATION));
	std::abort();
}
