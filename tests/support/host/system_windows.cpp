#include <QDir>

#include "host/imports_windows.hpp"
#include "host/system.hpp"

#include <windows.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {
/// Wine's ReplaceFileW fails when no backup is wanted, which is how libobs saves OBS's settings.
BOOL WINAPI replaceFile(LPCWSTR replaced, LPCWSTR replacement, LPCWSTR backup, DWORD flags, LPVOID, LPVOID)
{
	if (backup || GetFileAttributesW(replaced) == INVALID_FILE_ATTRIBUTES) {
		return ReplaceFileW(replaced, replacement, backup, flags, nullptr, nullptr);
	}
	return MoveFileExW(replacement, replaced, MOVEFILE_REPLACE_EXISTING);
}

bool isWine()
{
	return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}
} // namespace

void setEnvironment(const char *name, const QString &value)
{
	if (_wputenv_s(QString::fromLatin1(name).toStdWString().c_str(), value.toStdWString().c_str()) != 0) {
		qFatal("cannot set %s", name);
	}
}

QString newPipe(const QString &)
{
	static int number = 0;
	const QString name = u"//./pipe/kestrune-test-%1-%2"_s.arg(GetCurrentProcessId()).arg(++number);
	const std::wstring native = QDir::toNativeSeparators(name).toStdWString();
	// It stays for as long as the process: nobody asks for its end.
	if (CreateNamedPipeW(native.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr) ==
	    INVALID_HANDLE_VALUE) {
		qFatal("cannot make %s", qPrintable(name));
	}
	return name;
}

bool isAlive(qint64 processId)
{
	HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(processId));
	if (!process) {
		return false;
	}
	const bool alive = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
	CloseHandle(process);
	return alive;
}

void mendSystem()
{
	if (isWine()) {
		static const RedirectedImport mended(GetModuleHandleW(L"obs"), "kernel32.dll", "ReplaceFileW",
						     &replaceFile);
	}
}
