#pragma once

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <obs-frontend-api.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// A fake OBS frontend: tests set its answers and read the requests. The executable's obs_frontend_* functions use it;
/// they win over the shared library's.
struct Frontend {
	struct Dock {
		QString id{};
		QString title{};
		QPointer<QWidget> widget{};
		/// The widget's parent before OBS reparents it.
		const QObject *parent{nullptr};
	};

	// Answers
	QWidget *mainWindow{nullptr};
	bool acceptsDocks{true};
	bool replayBufferActive{false};
	/// Whether start requests succeed.
	bool replayBufferStarts{false};
	/// UTF-8; nothing without a saved replay.
	std::optional<QByteArray> lastReplay{};
	config_t *profile{nullptr};

	// Requests
	std::vector<Dock> docks{};
	std::vector<std::pair<obs_frontend_event_cb, void *>> eventCallbacks{};
	std::vector<std::pair<obs_frontend_save_cb, void *>> saveCallbacks{};
	/// If set, called when a dock is offered, before the answer.
	std::function<void(QWidget *dock)> onDockOffered{};
	int startRequests{0};
	/// If set, called at each start request: OBS may show a message box then.
	std::function<void()> onStartRequest{};
	int saveRequests{0};
	/// If set, called at each save request.
	std::function<void()> onSaveRequest{};
	int lastReplayQueries{0};
	int profileQueries{0};

	void emitEvent(obs_frontend_event event) const;
	/// Calls the save callbacks, as OBS does with its scene collection.
	void saveOrLoad(obs_data_t *saveData, bool saving) const;
};

Frontend &frontend();
