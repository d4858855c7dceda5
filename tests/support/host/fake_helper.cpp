#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "host/fake_helper.hpp"

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

HelperScript &HelperScript::add(const QString &action, QJsonObject step)
{
	step[u"do"] = action;
	steps_.append(step);
	return *this;
}

HelperScript &HelperScript::event(const QJsonObject &event)
{
	return write(QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n');
}

HelperScript &HelperScript::write(const QByteArray &bytes)
{
	return add(u"write"_s, {{u"bytes"_s, QString::fromLatin1(bytes.toBase64())}});
}

HelperScript &HelperScript::complain(const QByteArray &bytes)
{
	return add(u"complain"_s, {{u"bytes"_s, QString::fromLatin1(bytes.toBase64())}});
}

HelperScript &HelperScript::await(const QString &gate)
{
	return add(u"await"_s, {{u"gate"_s, gate}});
}

HelperScript &HelperScript::open(const QString &gate)
{
	return add(u"open"_s, {{u"gate"_s, gate}});
}

HelperScript &HelperScript::flood(const QByteArray &bytes)
{
	return add(u"flood"_s, {{u"bytes"_s, QString::fromLatin1(bytes.toBase64())}});
}

HelperScript &HelperScript::repeat(const QByteArray &bytes, int count)
{
	return add(u"repeat"_s, {{u"bytes"_s, QString::fromLatin1(bytes.toBase64())}, {u"count"_s, count}});
}

HelperScript &HelperScript::closeOutput()
{
	return add(u"close output"_s);
}

HelperScript &HelperScript::hang()
{
	return add(u"hang"_s);
}

HelperScript &HelperScript::crash()
{
	return add(u"crash"_s);
}

HelperScript &HelperScript::exit(int code)
{
	return add(u"exit"_s, {{u"code"_s, code}});
}

FakeHelper::FakeHelper()
{
	qputenv("KESTRUNE_HELPER", FAKE_HELPER);
	qputenv("FAKE_HELPER_DIR", folder_.path().toUtf8());
}

FakeHelper::~FakeHelper()
{
	qunsetenv("KESTRUNE_HELPER");
	qunsetenv("FAKE_HELPER_DIR");
}

void FakeHelper::on(const QString &command, const HelperScript &script) const
{
	const QString path = folder_.filePath(command.mid(2) + u".json"_s);
	const QString beside = path + u".new"_s;
	QFile file(beside);
	if (!file.open(QIODevice::WriteOnly)) {
		qFatal("cannot write %s", qUtf8Printable(beside));
	}
	file.write(QJsonDocument(script.steps()).toJson());
	file.close();

	// Replaced atomically, so runs read a whole script. Windows refuses while a run reads it: try again.
	const QDeadlineTimer deadline(10000);
	std::error_code failure{};
	do {
		std::filesystem::rename(file.filesystemFileName(), QFileInfo(path).filesystemFilePath(), failure);
	} while (failure && !deadline.hasExpired());
	if (failure) {
		qFatal("cannot write %s", qUtf8Printable(path));
	}
}

void FakeHelper::open(const QString &gate) const
{
	QFile file(folder_.filePath(gate));
	if (!file.open(QIODevice::WriteOnly)) {
		qFatal("cannot open gate %s", qUtf8Printable(gate));
	}
}

bool FakeHelper::isOpen(const QString &gate) const
{
	return QFileInfo::exists(folder_.filePath(gate));
}

QList<QJsonObject> FakeHelper::records(const QString &command) const
{
	QFile file(folder_.filePath(u"runs"_s));
	if (!file.open(QIODevice::ReadOnly)) {
		return {};
	}

	QList<QJsonObject> found;
	while (!file.atEnd()) {
		const QJsonObject run = QJsonDocument::fromJson(file.readLine()).object();
		if (command.isEmpty() || run[u"arguments"][0].toString() == command) {
			found << run;
		}
	}
	return found;
}

QList<QStringList> FakeHelper::runs(const QString &command) const
{
	QList<QStringList> found;
	for (const QJsonObject &run : records(command)) {
		found << run[u"arguments"].toVariant().toStringList();
	}
	return found;
}

QList<qint64> FakeHelper::processIds(const QString &command) const
{
	QList<qint64> found;
	for (const QJsonObject &run : records(command)) {
		found << run[u"pid"].toInteger();
	}
	return found;
}
