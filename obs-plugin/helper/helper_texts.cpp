#include "helper/helper_texts.hpp"

namespace {
QString addonsPage()
{
	return QStringLiteral(KESTRUNE_WEBSITE "/addons");
}
} // namespace

QString helperMissingText()
{
	return QStringLiteral("Kestrune helper missing. Reinstall from ") + addonsPage();
}

QString helperStartFailedText()
{
	return QStringLiteral("Couldn't start the Kestrune helper (blocked by antivirus?). Reinstall from ") +
	       addonsPage();
}

QString helperStoppedText(int exitCode)
{
	return QStringLiteral("The Kestrune helper stopped unexpectedly (code %1). "
			      "Details: %APPDATA%\\Kestrune\\logs\\helper.log")
		.arg(exitCode);
}
