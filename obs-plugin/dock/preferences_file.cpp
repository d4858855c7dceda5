#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include "dock/preferences_file.hpp"

#include <obs-module.h>
#include <util/platform.h>
#include <util/util.hpp>

namespace {
constexpr const char *temporarySuffix = "tmp";
constexpr const char *backupSuffix = "bak";

/// The file's members; nothing if Qt cannot read it. Not libobs's objects: they drop array elements that are not
/// objects, which other programs' keys may hold.
std::optional<QJsonObject> membersOf(const QString &path)
{
	QFile file(path);
	if (!file.open(QIODevice::ReadOnly)) {
		return std::nullopt;
	}
	const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
	return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QString stringOf(obs_data_t *data, const char *key)
{
	return QString::fromUtf8(obs_data_get_string(data, key));
}

void setString(obs_data_t *data, const char *key, const QString &value)
{
	obs_data_set_string(data, key, value.toUtf8().constData());
}
} // namespace

QString settingsPath()
{
	const BPtr<char> path = obs_module_get_config_path(obs_current_module(), "settings.json");
	return QString::fromUtf8(path.Get());
}

OBSDataAutoRelease readPreferences()
{
	const QString path = settingsPath();
	if (path.isEmpty()) {
		return nullptr;
	}

	return obs_data_create_from_json_file_safe(path.toUtf8().constData(), backupSuffix);
}

void updatePreferences(const std::function<void(obs_data_t *changed)> &change)
{
	const QString path = settingsPath();
	if (path.isEmpty()) {
		return;
	}

	QDir().mkpath(QFileInfo(path).absolutePath());
	// This replaces an unreadable file with its backup, or it would become the next backup.
	const OBSDataAutoRelease present = readPreferences();
	const OBSDataAutoRelease changed = obs_data_create();
	change(changed);

	std::optional<QJsonObject> members = present ? membersOf(path) : QJsonObject();
	if (!members) {
		// libobs reads files that Qt refuses: with null bytes at the end, or nested deeper than 1024.
		obs_data_apply(present, changed);
		obs_data_save_json_safe(present, path.toUtf8().constData(), temporarySuffix, backupSuffix);
		return;
	}

	const QJsonObject changedMembers = QJsonDocument::fromJson(obs_data_get_json(changed)).object();
	for (auto member = changedMembers.begin(); member != changedMembers.end(); ++member) {
		members->insert(member.key(), member.value());
	}

	const QByteArray json = QJsonDocument(*members).toJson();
	os_quick_write_utf8_file_safe(path.toUtf8().constData(), json.constData(), static_cast<size_t>(json.size()),
				      false, temporarySuffix, backupSuffix);
}

std::optional<ClipChoices> storedChoices()
{
	const OBSDataAutoRelease preferences = readPreferences();
	if (!preferences) {
		return std::nullopt;
	}

	// The cast keeps the low 32 bits of whatever number a hand-edited file holds.
	return ClipChoices{.length_s = static_cast<int>(obs_data_get_int(preferences, "seconds")),
			   .layout = stringOf(preferences, "layout"),
			   .style = stringOf(preferences, "style"),
			   .font = stringOf(preferences, "font"),
			   .captionPosition = stringOf(preferences, "caption_position")};
}

void storeChoices(const ClipChoices &choices)
{
	updatePreferences([&choices](obs_data_t *preferences) {
		obs_data_set_int(preferences, "seconds", choices.length_s);
		setString(preferences, "layout", choices.layout);
		setString(preferences, "style", choices.style);
		setString(preferences, "font", choices.font);
		setString(preferences, "caption_position", choices.captionPosition);
	});
}
