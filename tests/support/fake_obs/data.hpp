#pragma once

#include <QJsonObject>

#include <obs-data.h>

#include <map>
#include <string>
#include <vector>

/// Reference count, as in all libobs objects.
struct Counted {
	long owners{1};
};

struct obs_data : Counted {
	QJsonObject members{};
	std::string json{};
	/// Returned strings, which live as long as this object.
	std::map<std::string, std::string> texts{};
};

struct obs_data_array : Counted {
	std::vector<obs_data_t *> items{};
};
