#include "update/elevated_process.hpp"

// The installer is for Windows; elsewhere the package manager updates the module.

ElevatedProcess::~ElevatedProcess() = default;

std::optional<int> ElevatedProcess::exitCode() const
{
	return std::nullopt;
}

ElevatedStart startElevated(const QString &, const QString &)
{
	return {};
}
