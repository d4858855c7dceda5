#include <QDir>
#include <QFile>

#include "process_figures.hpp"

namespace {
qint64 statusNumber(const QByteArray &status, const QByteArray &name)
{
	const qsizetype begin = status.indexOf('\n' + name + ':') + name.size() + 2;
	const QByteArray line = status.sliced(begin, status.indexOf('\n', begin) - begin);
	return line.trimmed().split(' ').front().toLongLong();
}

QByteArray content(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

ProcessFigures processFigures()
{
	const QByteArray status = content(QStringLiteral("/proc/self/status"));
	qsizetype children = 0;
	const QStringList threads =
		QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
	for (const QString &thread : threads) {
		children += content(QStringLiteral("/proc/self/task/%1/children").arg(thread)).split(' ').size() - 1;
	}
	return {statusNumber(status, "VmRSS"), statusNumber(status, "VmHWM"),
		QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size(), children};
}

void resetPeakMemory()
{
	QFile file(QStringLiteral("/proc/self/clear_refs"));
	if (file.open(QIODevice::WriteOnly)) {
		file.write("5");
	}
}
