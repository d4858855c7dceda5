#include <QDir>
#include <QFile>

#include "process_figures.hpp"

using namespace Qt::StringLiterals;

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
	const QByteArray status = content(u"/proc/self/status"_s);
	qsizetype children = 0;
	const QStringList threads = QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
	for (const QString &thread : threads) {
		children += content(u"/proc/self/task/%1/children"_s.arg(thread)).split(' ').size() - 1;
	}
	return {statusNumber(status, "VmRSS"), statusNumber(status, "VmHWM"),
		QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System).size(), children};
}

void resetPeakMemory()
{
	QFile file(u"/proc/self/clear_refs"_s);
	if (file.open(QIODevice::WriteOnly)) {
		file.write("5");
	}
}
