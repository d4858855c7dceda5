#pragma once

#include <QStringList>

#include <functional>
#include <utility>

class QJsonObject;

/// Runs the helper, once per request. Runs may overlap and have no time limit. Tests have their own runner.
/// User-interface thread.
class HelperRunner {
public:
	using EventCallback = std::function<void(const QJsonObject &event)>;
	using FinishCallback = std::function<void(int exitCode)>;

	HelperRunner() = default;
	virtual ~HelperRunner() = default;
	Q_DISABLE_COPY_MOVE(HelperRunner)

	/// Starts the helper with `arguments`. While the runner lives, events and end reach the callbacks (either may
	/// be empty) from the event loop; a callback may run its own event loop. False if the helper is missing: the
	/// user is told, and neither callback is ever called.
	virtual bool runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish) = 0;
	bool runHelper(const QStringList &arguments, EventCallback onEvent)
	{
		return runHelper(arguments, std::move(onEvent), {});
	}

	/// Whether the helper program exists.
	virtual bool isInstalled() const = 0;
};
