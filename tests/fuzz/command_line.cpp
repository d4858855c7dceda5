#include <QFile>
#include <QStringList>

#include "commands/command_line.hpp"
#include "helper_host.hpp"
#include "video/layouts.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

// The first line of an input is where the camera is (KESTRUNE_SAMPLE_HELPER_CAMERA); each further line is an argument.
// The helper answers with events, or with its help or version; there is no ffmpeg to run, and what it would be told
// about the camera is numbers and nothing else.

namespace {
/// The graph without the numbers in it.
QString withoutNumbers(const QString &graph)
{
	QString shape = graph;
	shape.removeIf([](QChar letter) { return letter.isDigit() || letter == u'.'; });
	return shape.remove(u"e-"_s); // 0.00001 is 1e-05
}

void requireOnlyNumbers(const QString &layout)
{
	const Region camera = cameraRegion(layout);
	for (const double part : {camera.x, camera.y, camera.width, camera.height}) {
		require(part >= 0 && part <= 1.0001, "the camera is in the picture");
	}
	const QString graph = layoutGraph(layout, camera);
	require(std::ranges::none_of(graph, [](QChar letter) { return letter == u'\n' || letter == u' '; }),
		"a filter graph has no blanks");
	const QString plain = withoutNumbers(layoutGraph(layout, {0.5, 0.5, 0.25, 0.25}));
	const QString other = withoutNumbers(layoutGraph(layout, {0.25, 0.25, 0.25, 0.25}));
	const QString shape = withoutNumbers(graph);
	require(shape == plain || shape == other, "the camera changes nothing but numbers");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHelperHost();
	QByteArray rest = toBytes(data, size);
	qputenv("KESTRUNE_SAMPLE_HELPER_CAMERA", takeLine(rest).replace('\0', ' '));
	QStringList arguments{u"sample-helper"_s};
	while (!rest.isEmpty()) {
		arguments += QString::fromUtf8(takeLine(rest));
	}

	// It may read whatever replay it is told to.
	const Answer answer =
		answerOf([&arguments] { return runCommandLine(arguments); }, [](const char *) { return true; });
	require(answer.exitCode == 0 || answer.exitCode == 1, "a run succeeds or fails");
	require(!answer.output.isEmpty(), "every run says something");
	const bool forPeople = answer.output.startsWith("Usage: ") || answer.output.startsWith("sample-helper ");
	require(forPeople || answer.events.size() == answer.output.count('\n'), "every line of an answer is an event");
	const QStringList layouts = layoutKeys();
	for (const QString &layout : layouts) {
		requireOnlyNumbers(layout);
	}
	for (const QString &name : {u"/chat.json"_s, u"/account.json"_s, u"/look.json"_s}) {
		QFile::remove(stateFolder() + name);
	}
	lookForLeaks();
	return 0;
}
