#include <QProcess>

#include "helper/hidden_process.hpp"

// Programs get no console window here.
QProcess *hiddenProcess(QObject *parent)
{
	return new QProcess(parent);
}
