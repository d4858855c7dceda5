#include "host/system.hpp"

#include <windows.h>

#include <cstdlib>

void setEnvironment(const char *name, const QString &value)
{
	if (_wputenv_s(QString::fromLatin1(name).toStdWString().c_str(), value.toStdWString().c_str()) != 0) {
		qFatal("cannot set %s", name);
	}
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
