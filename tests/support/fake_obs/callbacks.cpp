#include <QByteArray>
#include <QMap>

#include <callback/calldata.h>
#include <callback/proc.h>
#include <utility>

#include <cstring>

// A calldata is a flat buffer: per value its name with a NUL, its size and its bytes. libobs's header frees it with
// bfree, so it cannot be a C++ object.

namespace {
struct Value {
	uint8_t *bytes{nullptr};
	size_t size{0};
};

Value findValue(const calldata_t *data, const char *name)
{
	size_t position = 0;
	while (position < data->size) {
		const char *found = reinterpret_cast<const char *>(data->stack + position);
		position += std::strlen(found) + 1;
		size_t size = 0;
		std::memcpy(&size, data->stack + position, sizeof(size));
		position += sizeof(size);
		if (std::strcmp(found, name) == 0) {
			return {data->stack + position, size};
		}
		position += size;
	}
	return {};
}

void append(calldata_t *data, const void *bytes, size_t size)
{
	if (size > 0) {
		std::memcpy(data->stack + data->size, bytes, size);
	}
	data->size += size;
}

void removeValue(calldata_t *data, const char *name, const Value &value)
{
	uint8_t *start = value.bytes - sizeof(size_t) - std::strlen(name) - 1;
	uint8_t *end = value.bytes + value.size;
	std::memmove(start, end, static_cast<size_t>(data->stack + data->size - end));
	data->size -= static_cast<size_t>(end - start);
}
} // namespace

bool calldata_get_data(const calldata_t *data, const char *name, void *out, size_t size)
{
	const Value value = findValue(data, name);
	if (!value.bytes || value.size != size) {
		return false;
	}
	std::memcpy(out, value.bytes, size);
	return true;
}

bool calldata_get_string(const calldata_t *data, const char *name, const char **str)
{
	const Value value = findValue(data, name);
	if (!value.bytes) {
		return false;
	}
	*str = value.size > 0 ? reinterpret_cast<const char *>(value.bytes) : nullptr;
	return true;
}

void calldata_set_data(calldata_t *data, const char *name, const void *in, size_t new_size)
{
	if (const Value old = findValue(data, name); old.bytes) {
		removeValue(data, name, old);
	}
	const size_t nameSize = std::strlen(name) + 1;
	data->stack =
		static_cast<uint8_t *>(brealloc(data->stack, data->size + nameSize + sizeof(new_size) + new_size));
	append(data, name, nameSize);
	append(data, &new_size, sizeof(new_size));
	append(data, in, new_size);
}

struct proc_handler {
	QMap<QByteArray, std::pair<proc_handler_proc_t, void *>> procedures{};
};

proc_handler_t *proc_handler_create()
{
	return new proc_handler;
}

void proc_handler_destroy(proc_handler_t *handler)
{
	delete handler;
}

/// Only the name in "void name(in ptr a)" matters here.
void proc_handler_add(proc_handler_t *handler, const char *decl_string, proc_handler_proc_t proc, void *data)
{
	const QByteArray declaration(decl_string);
	const qsizetype start = declaration.indexOf(' ') + 1;
	handler->procedures[declaration.sliced(start, declaration.indexOf('(') - start)] = {proc, data};
}

bool proc_handler_call(proc_handler_t *handler, const char *name, calldata_t *params)
{
	if (!handler || !handler->procedures.contains(name)) {
		return false;
	}
	const auto [procedure, data] = handler->procedures[name];
	procedure(data, params);
	return true;
}
