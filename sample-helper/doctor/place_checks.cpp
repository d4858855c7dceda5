#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryFile>

#include "doctor/checks.hpp"
#include "doctor/report.hpp"
#include "support/environment.hpp"
#include "video/encoders.hpp"
#include "video/layouts.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// A Short of a minute takes about a tenth of this.
constexpr qint64 plentyOfRoom_bytes = 1'000'000'000;
constexpr qint64 minRoom_bytes = 100'000'000;

bool isWritable(const QString &folder)
{
	QTemporaryFile file(folder + u"/doctor-XXXXXX"_s);
	return file.open() && file.write("x") == 1 && file.flush();
}

void checkFolder(Report &report, const QString &purpose, const QString &folder)
{
	const QString name = u"%1: %2"_s.arg(purpose, QDir::toNativeSeparators(folder));
	if (!QDir().mkpath(folder) || !isWritable(folder)) {
		report.problem(u"%1 can't be written to"_s.arg(name),
			       u"set KESTRUNE_SAMPLE_HELPER_OUTPUT or KESTRUNE_SAMPLE_HELPER_HOME to another folder"_s);
		return;
	}
	const qint64 free_bytes = QStorageInfo(folder).bytesAvailable();
	const QString room = u"%1, %2 GB free"_s.arg(name).arg(static_cast<double>(free_bytes) / 1e9, 0, 'f', 1);
	const QString remedy = u"delete what you no longer need there, or set KESTRUNE_SAMPLE_HELPER_OUTPUT"_s;
	if (free_bytes < minRoom_bytes) {
		report.problem(room, remedy);
	} else if (free_bytes < plentyOfRoom_bytes) {
		report.wrong(room + u": that is little"_s, remedy);
	} else {
		report.ok(room);
	}
}

/// What only those who use a setting can judge.
QStringList wrongChoices()
{
	QStringList notes{};
	cameraRegion(u"facecam"_s, notes);
	const QString encoder = environment::encoder();
	const QList<Encoder> &known = encoders();
	if (!encoder.isEmpty() &&
	    std::none_of(known.begin(), known.end(), [&](const Encoder &row) { return row.name == encoder; })) {
		notes += u"unknown encoder \"%1\""_s.arg(encoder);
	}
	return notes;
}
} // namespace

void checkSettings(Report &report)
{
	report.heading(u"Settings"_s);
	const QString file = QDir::toNativeSeparators(environment::settingsFile());
	report.remark(QFileInfo(file).isFile() ? u"settings file: %1"_s.arg(file)
					       : u"no settings file; it would be %1"_s.arg(file));
	for (const QString &problem : environment::problems() + wrongChoices()) {
		report.wrong(problem, u"correct it; sample-helper/README.md lists the settings and their values"_s);
	}
}

void checkFolders(Report &report)
{
	report.heading(u"Folders"_s);
	checkFolder(report, u"Shorts"_s, environment::outputFolder());
	checkFolder(report, u"all else"_s, environment::stateFolder());
}
