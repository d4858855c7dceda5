#include <QProcess>

#include "helper/hidden_process.hpp"

#include <windows.h>

QProcess *hiddenProcess(QObject *parent)
{
	auto *process = new QProcess(parent);
	process->setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments *arguments) {
		arguments->flags |= CREATE_NO_WINDOW;
		arguments->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
		arguments->startupInfo->wShowWindow = SW_HIDE;
	});
	return process;
}
