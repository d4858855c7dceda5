#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "timecoded.hpp"
#include "videos.hpp"

#include <cmath>

using namespace Qt::StringLiterals;

/// A Short begins and ends with the right frame and has the right sound, whatever the replay is stored in.
class ExactCutTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void cutsEveryContainerExactly_data();
	void cutsEveryContainerExactly();
};

namespace {
void addRow(const char *name, const timecoded::Kind &kind, int asked_s)
{
	QTest::addRow("%s from %g s, a keyframe every %d, last %d s", name, kind.start_s, kind.keyInterval, asked_s)
		<< timecoded::replay(kind) << asked_s;
}

/// When the beeps among the last seconds begin, from the first of their frames.
QList<double> beepsOfTheLast(int seconds)
{
	QList<double> beeps{};
	for (const double beep_s : timecoded::beeps_s()) {
		const double since_s = beep_s - (timecoded::length_s - seconds);
		if (since_s >= 0) {
			beeps += since_s;
		}
	}
	return beeps;
}

QString listed(const QList<double> &numbers)
{
	QStringList texts{};
	for (const double number : numbers) {
		texts += QString::number(number, 'f', 3);
	}
	return texts.join(u' ');
}

/// Whether the lists are alike, number by number.
bool areNear(const QList<double> &seen, const QList<double> &wanted, double tolerance)
{
	return std::equal(seen.begin(), seen.end(), wanted.begin(), wanted.end(),
			  [=](double left, double right) { return std::abs(left - right) <= tolerance; });
}
} // namespace

void ExactCutTest::cutsEveryContainerExactly_data()
{
	QTest::addColumn<QString>("replay");
	QTest::addColumn<int>("asked_s");
	struct Container {
		const char *name{};
		const char *format{};
		const char *options{""};
	};
	constexpr Container containers[]{
		{"mkv", "matroska"}, {"mp4", "mp4"}, {"fragmented mp4", "mp4", timecoded::fragmented},
		{"mov", "mov"},      {"flv", "flv"}, {"ts", "mpegts"}};
	for (const Container &container : containers) {
		// With keyframes at 0 and 25 s only; at 0 and 35 s only, that is, before and after the cut.
		addRow(container.name, {container.format, container.options, 0, 250}, 3);
		addRow(container.name, {container.format, container.options, 600, 350}, 7);
		addRow(container.name, {container.format, container.options, 1.5, 20}, 3);
	}
	addRow("mkv", {"matroska", "", 600, 20}, timecoded::length_s);
}

void ExactCutTest::cutsEveryContainerExactly()
{
	QFETCH(const QString, replay);
	QFETCH(const int, asked_s);
	const Sandbox sandbox;
	linkAccount(sandbox);
	const Run run = sandbox.run(processArguments(replay, asked_s, lookArguments("gameplay", "none")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());

	const timecoded::Content content = timecoded::contentOf(shortPath(run));
	const int first = (timecoded::length_s - asked_s) * timecoded::framesPerSecond;
	QList<int> numbers{};
	QList<double> times_s{};
	for (int i = 0; i < asked_s * timecoded::framesPerSecond; ++i) {
		numbers += first + i;
		times_s += static_cast<double>(i) / timecoded::framesPerSecond;
	}
	QCOMPARE(content.numbers, numbers);
	QVERIFY2(areNear(content.times_s, times_s, 0.002), qPrintable(listed(content.times_s)));
	QVERIFY2(areNear(content.beeps_s, beepsOfTheLast(asked_s), 0.04), qPrintable(listed(content.beeps_s)));
	const double length_s = videos::details(shortPath(run)).duration_s;
	QVERIFY2(std::abs(length_s - asked_s) < 1.0 / timecoded::framesPerSecond,
		 qPrintable(QString::number(length_s)));
}

KESTRUNE_TEST(ExactCutTest)
#include "exact_cut.moc"
