#include "clip_runs.hpp"

#include <QJsonArray>

QStringList processArguments(const QString &replay, int length_s, const QStringList &look)
{
	return QStringList{QStringLiteral("--process"), replay,
			   QStringLiteral("--seconds"), QString::number(length_s),
			   QStringLiteral("--scene"),   QStringLiteral("obs")} +
	       look;
}

QStringList lookArguments(const char *layout, const char *style)
{
	return {QStringLiteral("--layout"), QLatin1String(layout), QStringLiteral("--style"), QLatin1String(style)};
}

QString shortPath(const Run &run)
{
	return run.onlyEvent()[QLatin1String("formatted")].toArray().at(0).toString();
}

QString eventName(const Run &run)
{
	return run.onlyEvent()[QLatin1String("event")].toString();
}

QString note(const Run &run)
{
	return run.onlyEvent()[QLatin1String("note")].toString();
}

void linkAccount(const Sandbox &sandbox)
{
	sandbox.run({QStringLiteral("--link"), QStringLiteral("--no-browser")});
}
