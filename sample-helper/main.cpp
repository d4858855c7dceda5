#include <QCoreApplication>

#include "commands/command_line.hpp"
#include "support/events.hpp"
#include "support/log.hpp"

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
	const QCoreApplication application(argc, argv);
	QCoreApplication::setApplicationName(u"sample-helper"_s);
	QCoreApplication::setApplicationVersion(u"" SAMPLE_HELPER_VERSION ""_s);
	startLog();
	try {
		return runCommandLine(QCoreApplication::arguments());
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
		QJsonObject members = failure.members();
		members[u"error"_s] = failure.text();
		sendEvent(u"error"_s, members);
		return 1;
	}
}
