#include "fake_helper/system.hpp"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Qt::StringLiterals;

namespace {
/// The type of a handle that this program may have inherited.
qint64 typeOf(HANDLE handle)
{
	return GetFileType(handle);
}
} // namespace

QJsonObject startState()
{
	STARTUPINFOW start{};
	GetStartupInfoW(&start);
	// A number, which means the same handle in both programs if it is inherited.
	HANDLE other = reinterpret_cast<HANDLE>(qEnvironmentVariable("FAKE_HELPER_HANDLE").toULongLong());
	DWORD flags = 0;
	return {{u"console"_s, GetConsoleWindow() != nullptr},
		{u"showWindowSet"_s, (start.dwFlags & STARTF_USESHOWWINDOW) != 0},
		{u"showWindow"_s, start.wShowWindow},
		{u"input"_s, typeOf(GetStdHandle(STD_INPUT_HANDLE))},
		{u"output"_s, typeOf(GetStdHandle(STD_OUTPUT_HANDLE))},
		{u"error"_s, typeOf(GetStdHandle(STD_ERROR_HANDLE))},
		{u"otherHandle"_s, GetHandleInformation(other, &flags) != FALSE}};
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
