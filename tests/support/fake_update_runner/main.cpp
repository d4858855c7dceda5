// Stands in for the elevated installer, as KESTRUNE_UPDATE_RUNNER. Its argument is a sample installer, a JSON file such
// as {"version": "1.0.7"}; it writes that version to the manifest KESTRUNE_MANIFEST. Members that make it fail:
//   "exit": N      exits with that code, changes nothing
//   "crash": true  crashes, changes nothing
//   "keep": true   claims success, changes nothing

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include "fake_helper/system.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr int exitUnusable = 2;

int complain(const QString &text)
{
	qWarning("fake_update_runner: %s", qUtf8Printable(text));
	return exitUnusable;
}

QJsonObject readObject(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

int install(const QString &version)
{
	const QString path = qEnvironmentVariable("KESTRUNE_MANIFEST");
	if (path.isEmpty()) {
		return complain(u"KESTRUNE_MANIFEST isn't set."_s);
	}
	QJsonObject manifest = readObject(path);
	manifest[u"version"_s] = version;
	QSaveFile file(path);
	if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(manifest).toJson()) < 0 || !file.commit()) {
		return complain(u"couldn't write %1 (%2)."_s.arg(path, file.errorString()));
	}
	return 0;
}
} // namespace

int main(int argc, char *argv[])
{
	const QCoreApplication application(argc, argv);
	const QStringList arguments = QCoreApplication::arguments();
	if (arguments.size() != 2) {
		return complain(u"takes the path of an installer and nothing else."_s);
	}
	const QJsonObject installer = readObject(arguments.at(1));
	const QString version = installer.value(u"version").toString();
	if (version.isEmpty()) {
		return complain(u"%1 names no version."_s.arg(arguments.at(1)));
	}
	if (installer.value(u"crash").toBool()) {
		crash();
	}
	const int exitCode = installer.value(u"exit").toInt();
	if (exitCode != 0 || installer.value(u"keep").toBool()) {
		return exitCode;
	}
	return install(version);
}
