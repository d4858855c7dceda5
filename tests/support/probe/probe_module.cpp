// The test module and its obs-websocket vendor "kestrune-probe" with the request "snapshot", whose optional member
// "name" limits it to widgets of that name.

#include <QCoreApplication>
#include <QJsonDocument>

#include "dock_snapshot.hpp"

#include <obs-module.h>
#include <obs.hpp>

#include <chrono>
#include <memory>
#include <semaphore>

OBS_DECLARE_MODULE()

namespace {
/// The layout that obs-websocket expects.
struct RequestCallback {
	void (*function)(obs_data_t *request, obs_data_t *response, void *privateData) = nullptr;
	void *privateData = nullptr;
};

struct Answer {
	std::binary_semaphore ready{0};
	QByteArray json;
};

/// Answers with the dock's snapshot, or with "error" on a timeout: while OBS exits, its user-interface thread waits for
/// obs-websocket's threads, and waiting for it without a limit would deadlock.
void answerSnapshot(obs_data_t *request, obs_data_t *response, void *)
{
	const QByteArray name = obs_data_get_string(request, "name");
	// Shared: the queued call may still run after the timeout.
	const auto answer = std::make_shared<Answer>();
	QMetaObject::invokeMethod(
		QCoreApplication::instance(),
		[answer, name] {
			const QString widgetName = name.isEmpty() ? QString() : QString::fromUtf8(name);
			answer->json = QJsonDocument(dockSnapshot(widgetName)).toJson(QJsonDocument::Compact);
			answer->ready.release();
		},
		Qt::QueuedConnection);
	if (!answer->ready.try_acquire_for(std::chrono::seconds(5))) {
		obs_data_set_string(response, "error", "the user-interface thread is busy");
		return;
	}
	const OBSDataAutoRelease snapshot = obs_data_create_from_json(answer->json.constData());
	obs_data_apply(response, snapshot);
}

RequestCallback snapshotCallback{answerSnapshot, nullptr};

class Calldata {
public:
	Calldata() { calldata_init(&data_); }
	~Calldata() { calldata_free(&data_); }
	Calldata(const Calldata &) = delete;
	Calldata &operator=(const Calldata &) = delete;

	calldata_t *get() { return &data_; }

private:
	calldata_t data_{};
};
} // namespace

bool obs_module_load()
{
	return true;
}

/// Does nothing without obs-websocket; then tests see no answer.
void obs_module_post_load()
{
	Calldata lookup;
	proc_handler_call(obs_get_proc_handler(), "obs_websocket_api_get_ph", lookup.get());
	auto *websocket = static_cast<proc_handler_t *>(calldata_ptr(lookup.get(), "ph"));
	if (!websocket) {
		blog(LOG_WARNING, "[kestrune-probe] obs-websocket is not there");
		return;
	}
	Calldata vendor;
	calldata_set_string(vendor.get(), "name", "kestrune-probe");
	proc_handler_call(websocket, "vendor_register", vendor.get());

	Calldata request;
	calldata_set_ptr(request.get(), "vendor", calldata_ptr(vendor.get(), "vendor"));
	calldata_set_string(request.get(), "type", "snapshot");
	calldata_set_ptr(request.get(), "callback", &snapshotCallback);
	proc_handler_call(websocket, "vendor_request_register", request.get());
}
