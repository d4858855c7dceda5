#include <QFile>
#include <QMap>

#include <util/base.h>
#include <util/bmem.h>
#include <util/platform.h>
#include <util/text-lookup.h>

#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

void *bmalloc(size_t size)
{
	return std::malloc(size);
}

void *brealloc(void *ptr, size_t size)
{
	return std::realloc(ptr, size);
}

void bfree(void *ptr)
{
	std::free(ptr);
}

void *bmemdup(const void *ptr, size_t size)
{
	return std::memcpy(std::malloc(size), ptr, size);
}

namespace {
void logToErrorStream(int, const char *format, va_list arguments, void *)
{
	std::vfprintf(stderr, format, arguments);
	std::fputc('\n', stderr);
}

log_handler_t logHandler = logToErrorStream;
void *logParameter = nullptr;
} // namespace

void base_set_log_handler(log_handler_t handler, void *param)
{
	logHandler = handler ? handler : logToErrorStream;
	logParameter = param;
}

void blogva(int log_level, const char *format, va_list args)
{
	logHandler(log_level, format, args, logParameter);
}

void blog(int log_level, const char *format, ...)
{
	va_list arguments;
	va_start(arguments, format);
	blogva(log_level, format, arguments);
	va_end(arguments);
}

void *os_dlsym(void *module, const char *func)
{
	return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(module), func));
}

bool os_quick_write_utf8_file_safe(const char *path, const char *str, size_t len, bool, const char *temp_ext,
				   const char *backup_ext)
{
	const QString target = QString::fromUtf8(path);
	const QString temporary = target + u'.' + QString::fromUtf8(temp_ext);
	const QString backup = target + u'.' + QString::fromUtf8(backup_ext);
	QFile file(temporary);
	if (!file.open(QIODevice::WriteOnly) || file.write(str, static_cast<qint64>(len)) < 0) {
		return false;
	}
	file.close();
	if (QFile::exists(target)) {
		QFile::remove(backup);
		QFile::rename(target, backup);
	}
	return file.rename(target);
}

struct text_lookup {
	QMap<QByteArray, QByteArray> texts{};
};

lookup_t *text_lookup_create(const char *path)
{
	auto lookup = std::make_unique<lookup_t>();
	return text_lookup_add(lookup.get(), path) ? lookup.release() : nullptr;
}

bool text_lookup_add(lookup_t *lookup, const char *path)
{
	QFile file(QString::fromUtf8(path));
	if (!file.open(QIODevice::ReadOnly)) {
		return false;
	}
	while (!file.atEnd()) {
		const QByteArray line = file.readLine().trimmed();
		const qsizetype value = line.indexOf("=\"");
		if (value > 0 && line.endsWith('"')) {
			lookup->texts[line.first(value)] = line.sliced(value + 2).chopped(1);
		}
	}
	return true;
}

void text_lookup_destroy(lookup_t *lookup)
{
	delete lookup;
}

bool text_lookup_getstr(lookup_t *lookup, const char *lookup_val, const char **out)
{
	if (!lookup) {
		return false;
	}
	const auto found = lookup->texts.constFind(lookup_val);
	if (found == lookup->texts.cend()) {
		return false;
	}
	*out = found->constData();
	return true;
}
