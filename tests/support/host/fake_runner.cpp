#include <QJsonObject>

#include "host/fake_runner.hpp"

#include <algorithm>

bool FakeRunner::runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish)
{
	if (!installed_) {
		return false;
	}
	const auto run = std::make_shared<Run>();
	run->arguments = arguments;
	run->onEvent = std::move(onEvent);
	run->onFinish = std::move(onFinish);
	runs_.push_back(run);
	return true;
}

std::shared_ptr<FakeRunner::Run> FakeRunner::runInFlight(const QString &command) const
{
	const auto found = std::find_if(runs_.rbegin(), runs_.rend(),
					[&command](const auto &run) { return run->arguments.value(0) == command; });
	return found == runs_.rend() ? nullptr : *found;
}

void FakeRunner::answer(Run &run, const QByteArray &output)
{
	run.stream.append(output);
	while (const std::optional<QJsonObject> event = run.stream.next()) {
		if (run.onEvent) {
			run.onEvent(*event);
		}
	}
}

void FakeRunner::end(const std::shared_ptr<Run> &run, int exitCode)
{
	std::erase(runs_, run);
	if (run->onFinish) {
		run->onFinish(exitCode);
	}
}

void FakeRunner::endAll()
{
	while (!runs_.empty()) {
		// A copy: the run is taken out of the list.
		const std::shared_ptr<Run> newest = runs_.back();
		end(newest, 0);
	}
}
