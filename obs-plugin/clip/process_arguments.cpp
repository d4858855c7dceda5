#include "clip/process_arguments.hpp"
#include "dock/choice_tables.hpp"
#include "dock/clip_choices.hpp"

using namespace Qt::StringLiterals;

namespace {
void addUnlessEmpty(QStringList &arguments, const QString &name, const QString &value)
{
	if (!value.isEmpty()) {
		arguments << name << value;
	}
}
} // namespace

QStringList processArguments(const QString &replayPath, const ClipChoices &choices)
{
	QStringList arguments{u"--process"_s, replayPath, u"--seconds"_s, QString::number(choices.length_s),
			      u"--scene"_s,   u"obs"_s};
	addUnlessEmpty(arguments, u"--layout"_s, choices.layout);
	addUnlessEmpty(arguments, u"--style"_s, choices.style);
	addUnlessEmpty(arguments, u"--font"_s, choices.font);
	if (choices.style != QUtf8StringView(noCaptionsKey)) {
		arguments << u"--caption-position"_s << choices.captionPosition;
	}
	return arguments;
}
