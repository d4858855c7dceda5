#include "host/system.hpp"

#include <csignal>

void setEnvironment(const char *name, const QString &value)
{
	qputenv(name, value.toUtf8());
}

bool isAlive(qint64 processId)
{
	return ::kill(static_cast<pid_t>(processId), 0) == 0;
}
