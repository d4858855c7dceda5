#include <QtLogging>

#include "host/imports_windows.hpp"

#include <cstring>

namespace {
template<typename Structure> Structure *at(HMODULE library, ULONGLONG offset)
{
	return reinterpret_cast<Structure *>(reinterpret_cast<char *>(library) + offset);
}

bool isNamed(HMODULE library, const IMAGE_THUNK_DATA &import, const char *function)
{
	return !IMAGE_SNAP_BY_ORDINAL(import.u1.Ordinal) &&
	       std::strcmp(at<IMAGE_IMPORT_BY_NAME>(library, import.u1.AddressOfData)->Name, function) == 0;
}

/// What the library imports from this DLL: the names, and as many addresses; null when it imports nothing from it.
const IMAGE_IMPORT_DESCRIPTOR *importsFrom(HMODULE library, const char *dll)
{
	const auto headers = static_cast<ULONGLONG>(at<IMAGE_DOS_HEADER>(library, 0)->e_lfanew);
	const auto &directories = at<IMAGE_NT_HEADERS>(library, headers)->OptionalHeader.DataDirectory;
	const DWORD imports = directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
	for (const auto *from = at<IMAGE_IMPORT_DESCRIPTOR>(library, imports); from->Name; ++from) {
		if (_stricmp(at<char>(library, from->Name), dll) == 0) {
			return from;
		}
	}
	return nullptr;
}
} // namespace

IMAGE_THUNK_DATA *RedirectedImport::find(HMODULE library, const char *dll, const char *name)
{
	const IMAGE_IMPORT_DESCRIPTOR *from = library ? importsFrom(library, dll) : nullptr;
	if (from) {
		auto *address = at<IMAGE_THUNK_DATA>(library, from->FirstThunk);
		for (auto *import = at<IMAGE_THUNK_DATA>(library, from->OriginalFirstThunk); import->u1.AddressOfData;
		     ++import, ++address) {
			if (isNamed(library, *import, name)) {
				return address;
			}
		}
	}
	qFatal("%s is not imported from %s", name, dll);
}

void RedirectedImport::set(ULONGLONG address) const
{
	DWORD before = 0;
	if (!VirtualProtect(import_, sizeof(*import_), PAGE_READWRITE, &before)) {
		qFatal("cannot redirect an import");
	}
	import_->u1.Function = address;
	VirtualProtect(import_, sizeof(*import_), before, &before);
}
