#include <QJsonArray>

#include "clip_runs.hpp"

using namespace Qt::StringLiterals;

QStringList processArguments(const QString &replay, int length_s, const QStringList &look)
{
	return QStringList{u"--process"_s, replay, u"--seconds"_s, QString::number(length_s), u"--scene"_s, u"obs"_s} +
	       look;
}

QStringList lookArguments(const char *layout, const char *style)
{
	return {u"--layout"_s, QLatin1String(layout), u"--style"_s, QLatin1String(style)};
}

QString shortPath(const Run &run)
{
	return run.onlyEvent()[u"formatted"].toArray().at(0).toString();
}

QString eventName(const Run &run)
{
	return run.onlyEvent()[u"event"].toString();
}

QString note(const Run &run)
{
	return run.onlyEvent()[u"note"].toString();
}

void linkAccount(const Sandbox &sandbox)
{
	sandbox.run({u"--link"_s, u"--no-browser"_s});
}
