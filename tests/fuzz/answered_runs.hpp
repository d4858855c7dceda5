#pragma once

#include "dock/kestrune_dock.hpp"
#include "helper/event_stream.hpp"

// Takes the place of helper/helper_runner.cpp: the dock's runs start no process but wait here for their answers, so
// that thousands of them can be answered in a second.

struct AnsweredRun {
	/// The run's first switch.
	QString command{};
	KestruneDock::EventCallback onEvent{};
	KestruneDock::FinishCallback onFinish{};
	EventStream stream{};
};

/// The newest run in flight with this first switch; null when there is none.
std::shared_ptr<AnsweredRun> runInFlight(const QString &command);

/// Gives the run these bytes as its output.
void answer(AnsweredRun &run, const QByteArray &output);

/// Ends the run with this exit code.
void end(const std::shared_ptr<AnsweredRun> &run, int exitCode);
