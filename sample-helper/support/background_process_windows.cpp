#include <QProcess>

#include "support/background_process.hpp"

#include <windows.h>

namespace {
/// Puts this process into a job that ends with it; false on failure. What it starts belongs to the same job from the
/// first moment, which a job for each program could not promise.
bool joinJob()
{
	HANDLE job = CreateJobObjectW(nullptr, nullptr);
	JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
	limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
	// The handle stays open on purpose: the system closes it when this process ends.
	const bool joined =
		job != nullptr &&
		SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits)) != 0 &&
		AssignProcessToJobObject(job, GetCurrentProcess()) != 0;
	if (!joined) {
		qWarning("programs may outlive this one (error %lu)", GetLastError());
	}
	return joined;
}
} // namespace

void runInBackground(QProcess &process)
{
	[[maybe_unused]] static const bool joined = joinJob();
	process.setCreateProcessArgumentsModifier(
		[](QProcess::CreateProcessArguments *arguments) { arguments->flags |= BELOW_NORMAL_PRIORITY_CLASS; });
}
