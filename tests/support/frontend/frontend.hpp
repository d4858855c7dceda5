#pragma once

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <obs-frontend-api.h>
#include <utility>

#include <functional>
#include <optional>
#include <vector>

/// The OBS frontend as the module sees it, in memory: what it answers is set by a test, what is asked of it is
/// recorded. The obs_frontend_* functions of the test executable work on it; they win over the shared library's.
struct Frontend {
	struct Dock {
		QString id{};
		QString title{};
		QPointer<QWidget> widget{};
		/// The widget's parent before OBS takes the widget into a frame of its own.
		const QObject *parent{nullptr};
	};

	// Answers
	QWidget *mainWindow{nullptr};
	bool acceptsDocks{true};
	bool replayBufferActive{false};
	/// A request to start the Replay Buffer takes effect.
	bool replayBufferStarts{false};
	/// UTF-8; nothing when OBS has no saved replay to report.
	std::optional<QByteArray> lastReplay{};
	config_t *profile{nullptr};

	// Requests
	std::vector<Dock> docks{};
	std::vector<std::pair<obs_frontend_event_cb, void *>> eventCallbacks{};
	std::vector<std::pair<obs_frontend_save_cb, void *>> saveCallbacks{};
	/// Called when a dock is offered, before the answer, when set.
	std::function<void(QWidget *dock)> onDockOffered{};
	int startRequests{0};
	/// Called at each of them, when set: OBS may show a message box then.
	std::function<void()> onStartRequest{};
	int saveRequests{0};
	/// Called at each of them, when set.
	std::function<void()> onSaveRequest{};
	int lastReplayQueries{0};
	int profileQueries{0};

	void emitEvent(obs_frontend_event event) const;
	/// Calls the save callbacks as OBS does when it saves or loads its scene collection.
	void saveOrLoad(obs_data_t *saveData, bool saving) const;
};

Frontend &frontend();
