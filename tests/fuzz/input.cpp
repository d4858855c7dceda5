#include <QFile>

#include "input.hpp"

#ifdef KESTRUNE_FUZZ
#include <sanitizer/lsan_interface.h>
#endif

#include <cstdio>

QByteArray toBytes(const uint8_t *data, size_t size)
{
	return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

QByteArray takeLine(QByteArray &rest)
{
	const qsizetype newline = rest.indexOf('\n');
	const QByteArray line = rest.first(newline < 0 ? rest.size() : newline);
	rest.remove(0, line.size() + 1);
	return line;
}

void require(bool holds, const char *what)
{
	if (!holds) {
		qFatal("does not hold: %s", what);
	}
}

void writeFile(const QString &path, const QByteArray &bytes)
{
	QFile file(path);
	require(file.open(QIODevice::WriteOnly), "the file can be written");
	file.write(bytes);
}

QByteArray readFile(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void printFindingsOnly()
{
	qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &message) {
		if (type == QtFatalMsg) {
			std::fprintf(stderr, "%s\n", qUtf8Printable(message));
		}
	});
}

void lookForLeaks()
{
#ifdef KESTRUNE_FUZZ
	constexpr int interval = 20'000;
	static int inputs = 0;
	if (++inputs % interval == 0) {
		require(__lsan_do_recoverable_leak_check() == 0, "nothing leaks");
	}
#endif
}
