#include <QProcess>

#include "helper/hidden_process.hpp"

// Programs get no console window on Unix.
QProcess *hiddenProcess(QObject *parent)
{
	return new QProcess(parent);
}
