#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include "fake_obs/data.hpp"

#include <util/base.h>
#include <util/platform.h>

#include <cstring>

// Copies child objects in and out, where libobs shares them.

namespace {
QJsonValue member(const obs_data_t *data, const char *name)
{
	return data ? data->members.value(QString::fromUtf8(name)) : QJsonValue();
}

void setMember(obs_data_t *data, const char *name, const QJsonValue &value)
{
	if (data) {
		data->members[QString::fromUtf8(name)] = value;
	}
}

obs_data_t *fromFile(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? obs_data_create_from_json(file.readAll().constData()) : nullptr;
}
} // namespace

obs_data_t *obs_data_create()
{
	return new obs_data;
}

obs_data_t *obs_data_create_from_json(const char *json_string)
{
	const QJsonDocument document = QJsonDocument::fromJson(json_string);
	if (document.isNull()) {
		return nullptr;
	}
	obs_data_t *data = obs_data_create();
	data->members = document.object();
	return data;
}

obs_data_t *obs_data_create_from_json_file(const char *json_file)
{
	return fromFile(QString::fromUtf8(json_file));
}

obs_data_t *obs_data_create_from_json_file_safe(const char *json_file, const char *backup_ext)
{
	const QString path = QString::fromUtf8(json_file);
	if (obs_data_t *data = fromFile(path)) {
		return data;
	}

	const QString backup = path + u'.' + QString::fromUtf8(backup_ext);
	if (!QFile::exists(backup)) {
		return nullptr;
	}
	blog(LOG_WARNING, "obs-data: attempting backup file");
	QFile::remove(path);
	QFile::rename(backup, path);
	return fromFile(path);
}

void obs_data_addref(obs_data_t *data)
{
	if (data) {
		++data->owners;
	}
}

void obs_data_release(obs_data_t *data)
{
	if (data && --data->owners == 0) {
		delete data;
	}
}

const char *obs_data_get_json(obs_data_t *data)
{
	if (!data) {
		return nullptr;
	}
	data->json = QJsonDocument(data->members).toJson(QJsonDocument::Compact).toStdString();
	return data->json.c_str();
}

bool obs_data_save_json_safe(obs_data_t *data, const char *file, const char *temp_ext, const char *backup_ext)
{
	const char *json = obs_data_get_json(data);
	return json && os_quick_write_utf8_file_safe(file, json, std::strlen(json), false, temp_ext, backup_ext);
}

void obs_data_apply(obs_data_t *target, obs_data_t *apply_data)
{
	if (!target || !apply_data) {
		return;
	}
	for (auto value = apply_data->members.begin(); value != apply_data->members.end(); ++value) {
		target->members.insert(value.key(), value.value());
	}
}

void obs_data_set_string(obs_data_t *data, const char *name, const char *val)
{
	setMember(data, name, QString::fromUtf8(val));
}

void obs_data_set_int(obs_data_t *data, const char *name, long long val)
{
	setMember(data, name, static_cast<qint64>(val));
}

void obs_data_set_bool(obs_data_t *data, const char *name, bool val)
{
	setMember(data, name, val);
}

void obs_data_set_array(obs_data_t *data, const char *name, obs_data_array_t *array)
{
	QJsonArray items;
	if (array) {
		for (const obs_data_t *item : array->items) {
			items << item->members;
		}
	}
	setMember(data, name, items);
}

bool obs_data_has_user_value(obs_data_t *data, const char *name)
{
	return !member(data, name).isUndefined();
}

const char *obs_data_get_string(obs_data_t *data, const char *name)
{
	if (!data) {
		return "";
	}
	std::string &text = data->texts[name];
	text = member(data, name).toString().toStdString();
	return text.c_str();
}

long long obs_data_get_int(obs_data_t *data, const char *name)
{
	return static_cast<long long>(member(data, name).toDouble());
}

bool obs_data_get_bool(obs_data_t *data, const char *name)
{
	return member(data, name).toBool();
}

obs_data_array_t *obs_data_get_array(obs_data_t *data, const char *name)
{
	const QJsonValue value = member(data, name);
	if (!value.isArray()) {
		return nullptr;
	}
	obs_data_array_t *array = obs_data_array_create();
	const QJsonArray items = value.toArray();
	for (const QJsonValue &item : items) {
		if (!item.isObject()) {
			continue;
		}
		obs_data_t *object = obs_data_create();
		object->members = item.toObject();
		array->items.push_back(object);
	}
	return array;
}

obs_data_array_t *obs_data_array_create()
{
	return new obs_data_array;
}

void obs_data_array_addref(obs_data_array_t *array)
{
	if (array) {
		++array->owners;
	}
}

void obs_data_array_release(obs_data_array_t *array)
{
	if (!array || --array->owners > 0) {
		return;
	}
	for (obs_data_t *item : array->items) {
		obs_data_release(item);
	}
	delete array;
}

size_t obs_data_array_count(obs_data_array_t *array)
{
	return array ? array->items.size() : 0;
}

obs_data_t *obs_data_array_item(obs_data_array_t *array, size_t idx)
{
	if (!array || idx >= array->items.size()) {
		return nullptr;
	}
	obs_data_addref(array->items[idx]);
	return array->items[idx];
}

size_t obs_data_array_push_back(obs_data_array_t *array, obs_data_t *obj)
{
	obs_data_addref(obj);
	array->items.push_back(obj);
	return array->items.size() - 1;
}
