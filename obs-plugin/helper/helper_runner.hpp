#pragma once

#include <QJsonObject>
#include <QStringList>

#include <functional>

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
	/// Runs the helper for events of one `kind` only; all others are ignored, and so is the end.
	void ask(const QStringList &arguments, const QString &kind, const EventCallback &onAnswer)
	{
		const auto onEvent = [kind, onAnswer](const QJsonObject &event) {
			if (event[u"event"].toString() == kind) {
				onAnswer(event);
			}
		};
		runHelper(arguments, onEvent, {});
	}

	/// Whether the helper program exists.
	virtual bool isInstalled() const = 0;
};
