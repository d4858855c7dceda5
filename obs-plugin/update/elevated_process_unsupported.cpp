#include "update/elevated_process.hpp"

// Kestrune's installer is a Windows program; elsewhere the package manager updates the module.

ElevatedProcess::~ElevatedProcess() = default;

std::optional<int> ElevatedProcess::exitCode() const
{
	return std::nullopt;
}

ElevatedStart startElevated(const QString &, const QString &)
{
	return {};
}
