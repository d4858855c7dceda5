#pragma once

#include "helper/event_stream.hpp"
#include "helper/helper_runner.hpp"

#include <memory>
#include <vector>

/// A runner without processes, whose runs the test answers: thousands per second.
class FakeRunner : public HelperRunner {
public:
	struct Run {
		QStringList arguments{};
		EventCallback onEvent{};
		FinishCallback onFinish{};
		EventStream stream{};
	};

	bool runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish) override;
	bool isInstalled() const override { return installed_; }

	/// True at first.
	void setInstalled(bool installed) { installed_ = installed; }
	/// The newest run of this command in flight; null if none.
	std::shared_ptr<Run> runInFlight(const QString &command) const;
	/// The number of runs in flight.
	size_t count() const { return runs_.size(); }
	/// Delivers output of the run.
	static void answer(Run &run, const QByteArray &output);
	void end(const std::shared_ptr<Run> &run, int exitCode);
	/// Ends all runs with success, those that their ends start included.
	void endAll();

private:
	std::vector<std::shared_ptr<Run>> runs_{};
	bool installed_{true};
};
