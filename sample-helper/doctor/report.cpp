#include <QStringList>

#include "doctor/report.hpp"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
void printLine(const QString &text)
{
	const QByteArray bytes = text.toUtf8() + '\n';
	std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
	std::fflush(stdout);
}

QString counted(int count, const QString &noun)
{
	return count == 1 ? u"one "_s + noun : u"%1 %2s"_s.arg(count).arg(noun);
}
} // namespace

void Report::line(const QString &mark, const QString &text, const QString &remedy)
{
	constexpr int markWidth = 9;
	printLine(u"  "_s + mark.leftJustified(markWidth) + text);
	for (const QString &step : remedy.split(u'\n', Qt::SkipEmptyParts)) {
		printLine(u"  "_s + QString().leftJustified(markWidth) + u"-> "_s + step);
	}
}

void Report::heading(const QString &text)
{
	printLine(u"\n"_s + text);
}

void Report::ok(const QString &text)
{
	line(u"ok"_s, text, {});
}

void Report::remark(const QString &text)
{
	line(u"-"_s, text, {});
}

void Report::missing(const QString &text, const QString &remedy)
{
	++improvable_;
	line(u"missing"_s, text, remedy);
}

void Report::wrong(const QString &text, const QString &remedy)
{
	++improvable_;
	line(u"wrong"_s, text, remedy);
}

void Report::problem(const QString &text, const QString &remedy)
{
	++problems_;
	line(u"PROBLEM"_s, text, remedy);
}

void Report::conclude()
{
	if (problems_ > 0) {
		printLine(u"\nNo Short can be made yet: see %1 above."_s.arg(counted(problems_, u"problem"_s)));
	} else if (improvable_ > 0) {
		printLine(u"\nShorts can be made. They could be better: see %1 above."_s.arg(
			counted(improvable_, u"thing"_s)));
	} else {
		printLine(u"\nShorts can be made, and nothing is missing or wrong."_s);
	}
}
