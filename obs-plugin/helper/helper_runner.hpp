#pragma once

#include <QStringList>

#include <utility>

#include <functional>

class QJsonObject;

/// Runs the helper, once per request. Runs may overlap and are never timed out. Tests have a runner of their own.
/// User-interface thread.
class HelperRunner {
public:
	using EventCallback = std::function<void(const QJsonObject &event)>;
	using FinishCallback = std::function<void(int exitCode)>;

	HelperRunner() = default;
	virtual ~HelperRunner() = default;
	Q_DISABLE_COPY_MOVE(HelperRunner)

	/// Starts the helper with `arguments`. Its events and its end come to the callbacks (either may be empty) for
	/// as long as the runner lives, from the event loop: a callback may run an event loop of its own. False when
	/// the helper is missing: the user is told, and no callback is ever called.
	virtual bool runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish) = 0;
	bool runHelper(const QStringList &arguments, EventCallback onEvent)
	{
		return runHelper(arguments, std::move(onEvent), {});
	}

	/// Whether the helper is there to be run.
	virtual bool isInstalled() const = 0;
};
