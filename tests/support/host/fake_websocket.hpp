#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <callback/proc.h>
#include <obs.hpp>

#include <map>
#include <string>
#include <thread>

/// Stands in for obs-websocket: lets vendors register, and sends requests.
class FakeWebsocket {
public:
	using RequestFunction = void (*)(obs_data_t *request, obs_data_t *response, void *privateData);
	struct Callback {
		RequestFunction function{nullptr};
		void *privateData{nullptr};
	};

	FakeWebsocket()
	{
		proc_handler_add(
			handler_, "bool vendor_register(in string name, out ptr vendor)",
			[](void *data, calldata_t *call) { static_cast<FakeWebsocket *>(data)->registerVendor(call); },
			this);
		proc_handler_add(
			handler_, "bool vendor_request_register(in ptr vendor, in string type, in ptr callback)",
			[](void *data, calldata_t *call) { static_cast<FakeWebsocket *>(data)->registerRequest(call); },
			this);
		proc_handler_add(
			obs_get_proc_handler(), "void obs_websocket_api_get_ph(out ptr ph)",
			[](void *data, calldata_t *call) {
				auto *self = static_cast<FakeWebsocket *>(data);
				++self->handlerQueries;
				calldata_set_ptr(call, "ph", self->handler_);
			},
			this);
	}
	~FakeWebsocket() { proc_handler_destroy(handler_); }
	Q_DISABLE_COPY_MOVE(FakeWebsocket)

	/// Sends a request from another thread, as obs-websocket does; returns the response as JSON.
	QJsonObject request(const std::string &type, obs_data_t *data = nullptr) const
	{
		const OBSDataAutoRelease response = obs_data_create();
		const Callback callback = requests.at(type);
		std::thread([&] { callback.function(data, response, callback.privateData); }).join();
		return QJsonDocument::fromJson(obs_data_get_json(response)).object();
	}

	bool refusesVendors{false};
	bool refusesRequests{false};
	int handlerQueries{0};
	QStringList vendors{};
	std::map<std::string, Callback> requests{};

private:
	void registerVendor(calldata_t *call)
	{
		vendors << QString::fromUtf8(calldata_string(call, "name"));
		calldata_set_ptr(call, "vendor", refusesVendors ? nullptr : this);
	}
	void registerRequest(calldata_t *call)
	{
		if (calldata_ptr(call, "vendor") == this && !refusesRequests) {
			requests[calldata_string(call, "type")] =
				*static_cast<const Callback *>(calldata_ptr(call, "callback"));
		}
		calldata_set_bool(call, "success", !refusesRequests);
	}

	proc_handler_t *handler_{proc_handler_create()};
};
