#include <QFile>
#include <QMap>
#include <QSaveFile>

#include <util/config-file.h>

#include <memory>

using namespace Qt::StringLiterals;

struct config_data {
	QString path{};
	QMap<QString, QMap<QString, QString>> sections{};
};

namespace {
using Sections = QMap<QString, QMap<QString, QString>>;

Sections parse(const QString &text)
{
	Sections sections;
	QString section;
	const QStringList lines = text.split(u'\n');
	for (const QString &line : lines) {
		const QString trimmed = line.trimmed();
		const qsizetype equals = trimmed.indexOf(u'=');
		if (trimmed.startsWith(u'[') && trimmed.endsWith(u']')) {
			section = trimmed.sliced(1, trimmed.size() - 2);
		} else if (equals > 0) {
			sections[section][trimmed.first(equals)] = trimmed.sliced(equals + 1);
		}
	}
	return sections;
}

QString value(const config_t *config, const char *section, const char *name)
{
	return config->sections.value(QString::fromUtf8(section)).value(QString::fromUtf8(name));
}

void setValue(config_t *config, const char *section, const char *name, const QString &text)
{
	config->sections[QString::fromUtf8(section)][QString::fromUtf8(name)] = text;
}
} // namespace

int config_open(config_t **config, const char *file, enum config_open_type)
{
	QFile source(QString::fromUtf8(file));
	if (!source.open(QIODevice::ReadOnly)) {
		return CONFIG_FILENOTFOUND;
	}
	*config = new config_data{source.fileName(), parse(QString::fromUtf8(source.readAll()))};
	return CONFIG_SUCCESS;
}

int config_open_string(config_t **config, const char *str)
{
	*config = new config_data{{}, parse(QString::fromUtf8(str))};
	return CONFIG_SUCCESS;
}

int config_save_safe(config_t *config, const char *, const char *)
{
	QSaveFile target(config->path);
	if (!target.open(QIODevice::WriteOnly)) {
		return CONFIG_ERROR;
	}
	for (auto section = config->sections.cbegin(); section != config->sections.cend(); ++section) {
		target.write('[' + section.key().toUtf8() + "]\n");
		for (auto entry = section->cbegin(); entry != section->cend(); ++entry) {
			target.write(entry.key().toUtf8() + '=' + entry.value().toUtf8() + '\n');
		}
	}
	return target.commit() ? CONFIG_SUCCESS : CONFIG_ERROR;
}

void config_close(config_t *config)
{
	const std::unique_ptr<config_t> closed(config);
}

void config_set_int(config_t *config, const char *section, const char *name, int64_t number)
{
	setValue(config, section, name, QString::number(number));
}

void config_set_bool(config_t *config, const char *section, const char *name, bool on)
{
	setValue(config, section, name, on ? u"true"_s : u"false"_s);
}

int64_t config_get_int(config_t *config, const char *section, const char *name)
{
	return value(config, section, name).toLongLong();
}

bool config_get_bool(config_t *config, const char *section, const char *name)
{
	const QString text = value(config, section, name);
	return text.compare(u"true", Qt::CaseInsensitive) == 0 || text.toInt() != 0;
}
