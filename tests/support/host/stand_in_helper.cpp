#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "host/stand_in_helper.hpp"

#include <filesystem>
#include <system_error>

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
	return add(QStringLiteral("write"), {{QStringLiteral("bytes"), QString::fromLatin1(bytes.toBase64())}});
}

HelperScript &HelperScript::complain(const QByteArray &bytes)
{
	return add(QStringLiteral("complain"), {{QStringLiteral("bytes"), QString::fromLatin1(bytes.toBase64())}});
}

HelperScript &HelperScript::await(const QString &gate)
{
	return add(QStringLiteral("await"), {{QStringLiteral("gate"), gate}});
}

HelperScript &HelperScript::flood(const QByteArray &bytes)
{
	return add(QStringLiteral("flood"), {{QStringLiteral("bytes"), QString::fromLatin1(bytes.toBase64())}});
}

HelperScript &HelperScript::repeat(const QByteArray &bytes, int count)
{
	return add(QStringLiteral("repeat"), {{QStringLiteral("bytes"), QString::fromLatin1(bytes.toBase64())},
					      {QStringLiteral("count"), count}});
}

HelperScript &HelperScript::closeOutput()
{
	return add(QStringLiteral("close output"));
}

HelperScript &HelperScript::hang()
{
	return add(QStringLiteral("hang"));
}

HelperScript &HelperScript::crash()
{
	return add(QStringLiteral("crash"));
}

HelperScript &HelperScript::exit(int code)
{
	return add(QStringLiteral("exit"), {{QStringLiteral("code"), code}});
}

StandInHelper::StandInHelper()
{
	qputenv("KESTRUNE_HELPER", STAND_IN_HELPER);
	qputenv("STAND_IN_HELPER_DIR", folder_.path().toUtf8());
}

StandInHelper::~StandInHelper()
{
	qunsetenv("KESTRUNE_HELPER");
	qunsetenv("STAND_IN_HELPER_DIR");
}

void StandInHelper::on(const QString &command, const HelperScript &script) const
{
	const QString path = folder_.filePath(command.mid(2) + QStringLiteral(".json"));
	const QString beside = path + QStringLiteral(".new");
	QFile file(beside);
	if (!file.open(QIODevice::WriteOnly)) {
		qFatal("cannot write %s", qUtf8Printable(beside));
	}
	file.write(QJsonDocument(script.steps()).toJson());
	file.close();

	// Runs see the old script or the new one, whole. Windows replaces no file that one of them is just reading.
	const QDeadlineTimer deadline(10000);
	std::error_code failure{};
	do {
		std::filesystem::rename(file.filesystemFileName(), QFileInfo(path).filesystemFilePath(), failure);
	} while (failure && !deadline.hasExpired());
	if (failure) {
		qFatal("cannot write %s", qUtf8Printable(path));
	}
}

void StandInHelper::open(const QString &gate) const
{
	QFile file(folder_.filePath(gate));
	if (!file.open(QIODevice::WriteOnly)) {
		qFatal("cannot open gate %s", qUtf8Printable(gate));
	}
}

QList<QJsonObject> StandInHelper::records(const QString &command) const
{
	QFile file(folder_.filePath(QStringLiteral("runs")));
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

QList<QStringList> StandInHelper::runs(const QString &command) const
{
	QList<QStringList> found;
	for (const QJsonObject &run : records(command)) {
		found << run[u"arguments"].toVariant().toStringList();
	}
	return found;
}

QList<qint64> StandInHelper::processIds(const QString &command) const
{
	QList<qint64> found;
	for (const QJsonObject &run : records(command)) {
		found << run[u"pid"].toInteger();
	}
	return found;
}
