#include <QDir>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>
#include <QUrl>

#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/state.hpp"

using namespace Qt::StringLiterals;

namespace state {
namespace {

constexpr int lockTimeout_ms = 10000;

QString pathOf(const QString &name)
{
	return environment::stateFolder() + QLatin1Char('/') + name;
}

} // namespace

void makeFolder(const QString &path)
{
	if (!QDir().mkpath(path)) {
		throw Failure(u"couldn't make the folder %1."_s.arg(path));
	}
}

void writeFile(const QString &path, const QByteArray &content)
{
	QSaveFile file(path);
	if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
		throw Failure(u"couldn't save %1 (%2)."_s.arg(path, file.errorString()));
	}
}

QJsonObject read(const QString &name)
{
	QFile file(pathOf(name));
	if (!file.open(QIODevice::ReadOnly)) {
		return {};
	}
	const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
	if (!document.isObject()) {
		qWarning("%s is damaged; going on without it", qUtf8Printable(file.fileName()));
	}
	return document.object();
}

QJsonObject update(const QString &name, const std::function<void(QJsonObject &)> &change)
{
	makeFolder(environment::stateFolder());
	QLockFile lock(pathOf(name) + u".lock"_s);
	if (!lock.tryLock(lockTimeout_ms)) {
		throw Failure(u"couldn't lock %1; is another helper stuck?"_s.arg(pathOf(name)));
	}
	QJsonObject object = read(name);
	change(object);
	writeFile(pathOf(name), QJsonDocument(object).toJson());
	return object;
}

QString writePage(const QString &name, const QString &title, const QString &text)
{
	makeFolder(environment::stateFolder());
	const QString page = u"<!doctype html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
			     "<title>%1</title>\n<body style=\"font:20px sans-serif;margin:4em auto;"
			     "max-width:30em;background:#12141c;color:#e8eaf2\">\n<h1>%1</h1>\n<p>%2</p>\n"
			     "</body>\n</html>\n"_s.arg(title, text);
	writeFile(pathOf(name), page.toUtf8());
	return QString::fromLatin1(QUrl::fromLocalFile(pathOf(name)).toEncoded());
}

} // namespace state
