#include "helper/helper_texts.hpp"

using namespace Qt::StringLiterals;

namespace {
QString addonsPage()
{
	return u"" KESTRUNE_WEBSITE "/addons"_s;
}
} // namespace

QString helperMissingText()
{
	return u"Kestrune helper missing. Reinstall from "_s + addonsPage();
}

QString helperStartFailedText()
{
	return u"Couldn't start the Kestrune helper (blocked by antivirus?). Reinstall from "_s + addonsPage();
}

QString helperStoppedText(int exitCode)
{
	return u"The Kestrune helper stopped unexpectedly (code %1). "
	       "Details: %APPDATA%\\Kestrune\\logs\\helper.log"_s.arg(exitCode);
}
