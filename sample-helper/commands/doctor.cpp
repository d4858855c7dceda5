#include <QTemporaryDir>

#include "commands/doctor.hpp"
#include "doctor/checks.hpp"
#include "doctor/report.hpp"
#include "support/log.hpp"

int runDoctor(const QCommandLineParser &)
{
	// What other programs say belongs into the log, not between the lines of the report.
	logToFileOnly();
	Report report;
	const QTemporaryDir folder;
	checkFolders(report);
	checkSettings(report);
	if (checkFfmpeg(report)) {
		checkEncoders(report);
		checkTrialShort(report, folder.path());
		checkCaptions(report, folder.path());
		checkSpeech(report, folder.path());
	}
	report.conclude();
	return report.canMakeShorts() ? 0 : 1;
}
