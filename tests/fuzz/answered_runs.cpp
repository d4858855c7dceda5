#include <QProcess>

#include "answered_runs.hpp"

#include <algorithm>
#include <vector>

namespace {
std::vector<std::shared_ptr<AnsweredRun>> runs;
} // namespace

QProcess *KestruneDock::runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish)
{
	const auto run = std::make_shared<AnsweredRun>();
	run->command = arguments.value(0);
	run->onEvent = std::move(onEvent);
	run->onFinish = std::move(onFinish);
	runs.push_back(run);
	// Never started; the dock only asks whether there is one.
	return new QProcess(this);
}

void KestruneDock::silenceRuns()
{
	runs.clear();
}

std::shared_ptr<AnsweredRun> runInFlight(const QString &command)
{
	const auto found = std::find_if(runs.rbegin(), runs.rend(),
					[&command](const auto &run) { return run->command == command; });
	return found == runs.rend() ? nullptr : *found;
}

void answer(AnsweredRun &run, const QByteArray &output)
{
	run.stream.append(output);
	while (const std::optional<QJsonObject> event = run.stream.next()) {
		if (run.onEvent)
			run.onEvent(*event);
	}
}

void end(const std::shared_ptr<AnsweredRun> &run, int exitCode)
{
	std::erase(runs, run);
	if (run->onFinish)
		run->onFinish(exitCode);
}
