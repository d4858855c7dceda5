#include <QDir>
#include <QFileInfo>

#include "fake_obs/hotkeys.hpp"

#include <obs-module.h>
#include <obs.h>
#include <util/platform.h>
#include <util/text-lookup.h>

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

struct obs_module {
	std::string fileName{};
	QString name{};
	QDir data{};
	HMODULE library{nullptr};
	bool loaded{false};

	template<typename Function> Function *entry(const char *entryName) const
	{
		return reinterpret_cast<Function *>(os_dlsym(library, entryName));
	}
};

namespace {
QString configFolder;
std::string locale;
proc_handler_t *procedures = nullptr;
std::vector<std::unique_ptr<obs_module>> modules;

char *newText(const QString &text)
{
	return bstrdup(text.toUtf8().constData());
}
} // namespace

bool obs_startup(const char *newLocale, const char *module_config_path, profiler_name_store_t *)
{
	locale = newLocale;
	configFolder = QString::fromUtf8(module_config_path);
	procedures = proc_handler_create();
	return true;
}

bool obs_initialized()
{
	return procedures != nullptr;
}

/// Like libobs, keeps the modules' libraries loaded.
void obs_shutdown()
{
	for (const auto &module : modules) {
		if (const auto freeLocale = module->entry<void()>("obs_module_free_locale")) {
			freeLocale();
		}
		if (const auto unload = module->entry<void()>("obs_module_unload"); unload && module->loaded) {
			unload();
		}
	}
	modules.clear();
	forgetHotkeys();
	proc_handler_destroy(procedures);
	procedures = nullptr;
}

proc_handler_t *obs_get_proc_handler()
{
	return procedures;
}

int obs_open_module(obs_module_t **module, const char *path, const char *data_path)
{
	const QFileInfo file(QString::fromUtf8(path));
	HMODULE library = LoadLibraryW(QDir::toNativeSeparators(file.absoluteFilePath()).toStdWString().c_str());
	if (!library) {
		return MODULE_FILE_NOT_FOUND;
	}

	auto opened = std::make_unique<obs_module>();
	opened->fileName = file.fileName().toStdString();
	opened->name = file.completeBaseName();
	opened->data = QDir(QString::fromUtf8(data_path));
	opened->library = library;
	const auto setPointer = opened->entry<void(obs_module_t *)>("obs_module_set_pointer");
	const auto version = opened->entry<uint32_t()>("obs_module_ver");
	if (!setPointer || !version || !opened->entry<bool()>("obs_module_load")) {
		return MODULE_MISSING_EXPORTS;
	}
	if (version() > LIBOBS_API_VER) {
		return MODULE_INCOMPATIBLE_VER;
	}

	*module = modules.emplace_back(std::move(opened)).get();
	setPointer(*module);
	if (const auto setLocale = (*module)->entry<void(const char *)>("obs_module_set_locale")) {
		setLocale(locale.c_str());
	}
	return MODULE_SUCCESS;
}

bool obs_init_module(obs_module_t *module)
{
	module->loaded = module->entry<bool()>("obs_module_load")();
	return module->loaded;
}

const char *obs_get_module_file_name(obs_module_t *module)
{
	return module->fileName.c_str();
}

void *obs_get_module_lib(obs_module_t *module)
{
	return module->library;
}

char *obs_find_module_file(obs_module_t *module, const char *file)
{
	if (!module) {
		return nullptr;
	}
	const QString path = module->data.filePath(QString::fromUtf8(file));
	return QFileInfo::exists(path) ? newText(path) : nullptr;
}

char *obs_module_get_config_path(obs_module_t *module, const char *file)
{
	if (!module) {
		return nullptr;
	}
	return newText(configFolder + u'/' + module->name + u'/' + QString::fromUtf8(file));
}

lookup_t *obs_module_load_locale(obs_module_t *module, const char *default_locale, const char *wanted)
{
	const auto path = [module](const char *name) {
		return module->data.filePath(u"locale/%1.ini"_s.arg(QString::fromUtf8(name))).toUtf8();
	};
	lookup_t *lookup = text_lookup_create(path(default_locale).constData());
	if (lookup) {
		text_lookup_add(lookup, path(wanted).constData());
	}
	return lookup;
}
