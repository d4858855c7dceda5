#include <QDir>

#include "support/settings.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace settings {
namespace {
enum class Kind : std::uint8_t { Text, Milliseconds, Count, Switch };

struct Setting {
	const char *name{};
	Kind kind{};
};

constexpr std::array<Setting, 18> all{{
	{"HOME", Kind::Text},
	{"OUTPUT", Kind::Text},
	{"CAMERA", Kind::Text},
	{"FFMPEG", Kind::Text},
	{"ENCODER", Kind::Text},
	{"CLIPS_AT_ONCE", Kind::Count},
	{"QUEUE_LIMIT_MS", Kind::Milliseconds},
	{"WHISPER", Kind::Text},
	{"WHISPER_MODEL", Kind::Text},
	{"WHISPER_LIMIT_MS", Kind::Milliseconds},
	{"TRIAL_LIMIT_MS", Kind::Milliseconds},
	{"STILL_LIMIT_MS", Kind::Milliseconds},
	{"OFFLINE", Kind::Switch},
	{"LINK_MS", Kind::Milliseconds},
	{"CONSENT_MS", Kind::Milliseconds},
	{"UPDATES", Kind::Text},
	{"CURRENT_VERSION", Kind::Text},
	{"DOWNLOAD_MS", Kind::Milliseconds},
}};

QString cleaned(QString value)
{
	constexpr QChar mark = u'"';
	if (value.size() >= 2 && value.startsWith(mark) && value.endsWith(mark)) {
		value = value.sliced(1, value.size() - 2);
	}
	return value.startsWith(u"~/") ? QDir::homePath() + value.sliced(1) : value;
}

/// Reads one line that is neither empty nor a comment.
void parseLine(const QString &line, int number, Content &content)
{
	const qsizetype sign = line.indexOf(u'=');
	if (sign < 0) {
		content.problems += u"Line %1 of the settings file has no \"=\"."_s.arg(number);
		return;
	}
	QString name = line.first(sign).trimmed().toUpper();
	const QLatin1StringView prefix("KESTRUNE_SAMPLE_HELPER_");
	if (name.startsWith(prefix)) {
		name.remove(0, prefix.size());
	}
	const QString value = cleaned(line.sliced(sign + 1).trimmed());
	if (value.isEmpty()) {
		return;
	}
	const QString wrong =
		name == u"HOME" ? u"can only be set as an environment variable"_s : complaint(name, value);
	if (!wrong.isEmpty()) {
		content.problems += u"Line %1 of the settings file: %2 %3."_s.arg(number).arg(name, wrong);
		return;
	}
	if (content.values.contains(name)) {
		content.problems +=
			u"Line %1 of the settings file sets %2 again; this one counts."_s.arg(number).arg(name);
	}
	content.values[name] = value;
}
} // namespace

Content parse(const QByteArray &file)
{
	QByteArray text = file;
	if (text.startsWith("\xef\xbb\xbf")) {
		text.remove(0, 3);
	}
	Content content{};
	int number = 0;
	for (const QByteArray &bytes : text.split('\n')) {
		++number;
		const QString line = QString::fromUtf8(bytes).trimmed();
		if (!line.isEmpty() && !line.startsWith(u'#') && !line.startsWith(u';') && !line.startsWith(u'[')) {
			parseLine(line, number, content);
		}
	}
	return content;
}

QStringList names()
{
	QStringList result{};
	for (const Setting &setting : all) {
		result += QLatin1String(setting.name);
	}
	return result;
}

QString complaint(const QString &name, const QString &value)
{
	const auto setting = std::find_if(all.begin(), all.end(),
					  [&](const Setting &row) { return name == QLatin1String(row.name); });
	if (setting == all.end()) {
		return u"is no setting"_s;
	}
	bool isNumber = false;
	const int number = value.toInt(&isNumber);
	switch (setting->kind) {
	case Kind::Text:
		break;
	case Kind::Milliseconds:
		return isNumber && number >= 0 ? QString() : u"needs a number of milliseconds, not \"%1\""_s.arg(value);
	case Kind::Count:
		return isNumber && number >= 1 ? QString() : u"needs a number from 1 up, not \"%1\""_s.arg(value);
	case Kind::Switch:
		return value == u"0" || value == u"1" ? QString() : u"needs 0 or 1, not \"%1\""_s.arg(value);
	}
	return {};
}
} // namespace settings
