#include "module/log.hpp"

#include <cstdarg>
#include <string>

void moduleLog(int level, const char *format, ...)
{
	const std::string prefixed = std::string("[kestrune] ") + format;

	va_list arguments;
	va_start(arguments, format);
	blogva(level, prefixed.c_str(), arguments);
	va_end(arguments);
}
