#include <QDockWidget>
#include <QMainWindow>

#include "fake_frontend/fake_frontend.hpp"

#include <util/bmem.h>

#include <algorithm>

Frontend &frontend()
{
	static Frontend instance;
	return instance;
}

void Frontend::emitEvent(obs_frontend_event event) const
{
	const auto callbacks = eventCallbacks;
	for (const auto &[callback, data] : callbacks) {
		callback(event, data);
	}
}

void Frontend::saveOrLoad(obs_data_t *saveData, bool saving) const
{
	const auto callbacks = saveCallbacks;
	for (const auto &[callback, data] : callbacks) {
		callback(saveData, saving, data);
	}
}

void *obs_frontend_get_main_window()
{
	return frontend().mainWindow;
}

bool obs_frontend_add_dock_by_id(const char *id, const char *title, void *widget)
{
	auto *dock = static_cast<QWidget *>(widget);
	frontend().docks.push_back({QString::fromUtf8(id), QString::fromUtf8(title), dock, dock->parent()});
	if (frontend().onDockOffered) {
		frontend().onDockOffered(dock);
	}
	if (!frontend().acceptsDocks) {
		return false;
	}

	auto *window = static_cast<QMainWindow *>(frontend().mainWindow);
	auto *frame = new QDockWidget(QString::fromUtf8(title), window);
	frame->setWidget(dock);
	window->addDockWidget(Qt::RightDockWidgetArea, frame);
	return true;
}

void obs_frontend_add_event_callback(obs_frontend_event_cb callback, void *private_data)
{
	frontend().eventCallbacks.emplace_back(callback, private_data);
}

void obs_frontend_remove_event_callback(obs_frontend_event_cb callback, void *private_data)
{
	std::erase(frontend().eventCallbacks, std::pair(callback, private_data));
}

void obs_frontend_add_save_callback(obs_frontend_save_cb callback, void *private_data)
{
	frontend().saveCallbacks.emplace_back(callback, private_data);
}

void obs_frontend_remove_save_callback(obs_frontend_save_cb callback, void *private_data)
{
	std::erase(frontend().saveCallbacks, std::pair(callback, private_data));
}

bool obs_frontend_replay_buffer_active()
{
	return frontend().replayBufferActive;
}

void obs_frontend_replay_buffer_start()
{
	++frontend().startRequests;
	if (frontend().replayBufferStarts) {
		frontend().replayBufferActive = true;
	}
	if (frontend().onStartRequest) {
		frontend().onStartRequest();
	}
}

void obs_frontend_replay_buffer_save()
{
	++frontend().saveRequests;
	if (frontend().onSaveRequest) {
		frontend().onSaveRequest();
	}
}

void obs_frontend_replay_buffer_stop()
{
	frontend().replayBufferActive = false;
}

char *obs_frontend_get_last_replay()
{
	++frontend().lastReplayQueries;
	const std::optional<QByteArray> &path = frontend().lastReplay;
	return path ? bstrdup(path->constData()) : nullptr;
}

config_t *obs_frontend_get_profile_config()
{
	++frontend().profileQueries;
	return frontend().profile;
}
