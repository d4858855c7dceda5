#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include "update/manifest.hpp"

#include <obs-module.h>
#include <util/util.hpp>

namespace {
QString manifestPath()
{
	QString override = qEnvironmentVariable("KESTRUNE_MANIFEST");
	if (!override.isEmpty()) {
		return override;
	}

	const BPtr<char> moduleFile = obs_find_module_file(obs_current_module(), "manifest.json");
	return QString::fromUtf8(moduleFile.Get());
}
} // namespace

QString installedVersion()
{
	const QString path = manifestPath();
	QFile manifest(path);
	if (path.isEmpty() || !manifest.open(QIODevice::ReadOnly)) {
		return {};
	}
	return manifestVersion(manifest.readAll());
}

QString manifestVersion(const QByteArray &json)
{
	return QJsonDocument::fromJson(json).object()[u"version"].toString();
}
