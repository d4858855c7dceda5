#include <QDir>

#include "update/elevated_process.hpp"

#include <windows.h>

#include <shellapi.h>

#include <string>

ElevatedProcess::~ElevatedProcess()
{
	CloseHandle(handle_);
}

std::optional<int> ElevatedProcess::exitCode() const
{
	if (WaitForSingleObject(handle_, 0) == WAIT_TIMEOUT) {
		return std::nullopt;
	}

	DWORD code = 1;
	GetExitCodeProcess(handle_, &code);
	return static_cast<int>(code);
}

ElevatedStart startElevated(const QString &program, const QString &parameters)
{
	const std::wstring file = QDir::toNativeSeparators(program).toStdWString();
	const std::wstring arguments = parameters.toStdWString();

	SHELLEXECUTEINFOW info{};
	info.cbSize = sizeof(info);
	info.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
	info.lpVerb = L"runas";
	info.lpFile = file.c_str();
	info.lpParameters = arguments.c_str();
	info.nShow = SW_HIDE;
	if (!ShellExecuteExW(&info) || !info.hProcess) {
		return {nullptr, GetLastError()};
	}
	return {std::make_unique<ElevatedProcess>(info.hProcess), 0};
}
