#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QUrl>

#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/files.hpp"
#include "support/state.hpp"

using namespace Qt::StringLiterals;

namespace state {
namespace {
QString pathOf(const QString &name)
{
	return environment::stateFolder() + u'/' + name;
}

/// Keeps other runs from changing state files.
class Lock {
public:
	Lock()
	{
		constexpr int limit_ms = 5000;
		files::makeFolder(environment::stateFolder());
		if (!file_.open(QIODevice::ReadWrite)) {
			throw Failure(u"couldn't write to %1: %2."_s.arg(environment::stateFolder(),
									 files::cause(file_.errorString())));
		}
		files::lock(file_, limit_ms);
	}

private:
	QFile file_{pathOf(u"state.lock"_s)};
};

struct Content {
	QJsonObject object{};
	/// Why the file is unusable; empty if it is fine.
	QString damage{};
};

/// Reads a state file; empty if there is none. Throws Failure if it can't be read.
Content load(const QString &name)
{
	if (!QFileInfo::exists(pathOf(name))) {
		return {};
	}
	const QByteArray bytes = files::readSmall(pathOf(name));
	if (bytes.size() > files::maxSmallFile_bytes) {
		return {{}, u"too large"_s};
	}
	const QJsonDocument document = QJsonDocument::fromJson(bytes);
	return document.isObject() ? Content{document.object(), {}} : Content{{}, u"damaged"_s};
}

/// Like load(), for a run that holds the lock: also moves an unusable file out of the way.
QJsonObject loadLocked(const QString &name)
{
	const Content content = load(name);
	if (!content.damage.isEmpty()) {
		const QString time = QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd-HHmmss-zzz"_s);
		const QString kept = pathOf(name) + u".damaged-"_s + time;
		files::move(pathOf(name), kept);
		qWarning("%s is %s; kept as %s, going on without it", qUtf8Printable(pathOf(name)),
			 qUtf8Printable(content.damage), qUtf8Printable(kept));
	}
	return content.object;
}
} // namespace

QJsonObject read(const QString &name)
{
	try {
		const Content content = load(name);
		if (content.damage.isEmpty()) {
			return content.object;
		}
		// Another run may be repairing it right now.
		const Lock lock;
		return loadLocked(name);
	} catch (const Failure &failure) {
		qWarning("%s; going on without it", qUtf8Printable(failure.clause()));
		return {};
	}
}

QJsonObject update(const QString &name, const std::function<void(QJsonObject &)> &change)
{
	const Lock lock;
	const QJsonObject before = loadLocked(name);
	QJsonObject object = before;
	change(object);
	if (object == before) {
		return object;
	}
	const QByteArray content = QJsonDocument(object).toJson();
	if (content.size() > files::maxSmallFile_bytes) {
		throw Failure(u"couldn't save %1: it would be too large."_s.arg(name));
	}
	files::replace(pathOf(name), content);
	return object;
}

QString writePage(const QString &name, const QString &title, const QString &text)
{
	const QString page = u"<!doctype html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
			     "<title>%1</title>\n<body style=\"font:20px sans-serif;margin:4em auto;"
			     "max-width:30em;background:#12141c;color:#e8eaf2\">\n<h1>%1</h1>\n<p>%2</p>\n"
			     "</body>\n</html>\n"_s.arg(title, text);
	const Lock lock;
	files::replace(pathOf(name), page.toUtf8());
	return QString::fromLatin1(QUrl::fromLocalFile(pathOf(name)).toEncoded());
}
} // namespace state
