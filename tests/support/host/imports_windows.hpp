#pragma once

#include <windows.h>

/// Has a loaded library call another function instead of one that it imports from a DLL, while this object lives. Ends
/// the program when the library imports no such function.
class RedirectedImport {
public:
	template<typename Function>
	RedirectedImport(HMODULE library, const char *dll, const char *name, Function *replacement)
		: import_(find(library, dll, name))
		, before_(import_->u1.Function)
	{
		set(reinterpret_cast<ULONGLONG>(replacement));
	}
	~RedirectedImport() { set(before_); }
	RedirectedImport(const RedirectedImport &) = delete;
	RedirectedImport &operator=(const RedirectedImport &) = delete;

private:
	/// Where the library keeps the function's address.
	static IMAGE_THUNK_DATA *find(HMODULE library, const char *dll, const char *name);
	void set(ULONGLONG address) const;

	IMAGE_THUNK_DATA *const import_;
	const ULONGLONG before_;
};
