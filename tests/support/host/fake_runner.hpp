#pragma once

#include "helper/event_stream.hpp"
#include "helper/helper_runner.hpp"

#include <memory>
#include <vector>

/// A runner without processes: its runs wait for the test to answer them, thousands in a second.
class FakeRunner : public HelperRunner {
public:
	struct Run {
		QStringList arguments{};
		EventCallback onEvent{};
		FinishCallback onFinish{};
		EventStream stream{};
	};

	using HelperRunner::runHelper;
	bool runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish) override;
	bool isInstalled() const override { return installed_; }

	/// Whether there is a helper; there is at first.
	void setInstalled(bool installed) { installed_ = installed; }
	/// The newest run in flight with this first switch; null when there is none.
	std::shared_ptr<Run> runInFlight(const QString &command) const;
	/// How many runs are in flight.
	size_t count() const { return runs_.size(); }
	/// Gives the run these bytes as its output.
	static void answer(Run &run, const QByteArray &output);
	/// Ends the run with this exit code.
	void end(const std::shared_ptr<Run> &run, int exitCode);

private:
	std::vector<std::shared_ptr<Run>> runs_{};
	bool installed_{true};
};
