#include <QDir>
#include <QFileInfo>

#include "helper/helper_locator.hpp"

#include <obs-module.h>
#include <util/util.hpp>

using namespace Qt::StringLiterals;

QString locateHelper()
{
	QString override = qEnvironmentVariable("KESTRUNE_HELPER");
	if (!override.isEmpty()) {
		return override;
	}

	BPtr<char> moduleFile = obs_find_module_file(obs_current_module(), "helper/Kestrune.exe");
	if (moduleFile) {
		const QString path = QString::fromUtf8(moduleFile.Get());
		if (QFileInfo::exists(path)) {
			return path;
		}
	}

	return QDir(qEnvironmentVariable("LOCALAPPDATA")).filePath(u"Programs/Kestrune/Kestrune.exe"_s);
}
