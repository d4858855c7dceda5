#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "helper/event_stream.hpp"

#include <benchmark/benchmark.h>
#include <malloc.h>

using namespace Qt::StringLiterals;

// Compares the event stream with the bare parsing of lines that are already split.

namespace {
QByteArray lineOf(const QJsonObject &event)
{
	return QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
}

/// One of each event of a clip, with texts of usual length.
QByteArray realisticEvents()
{
	QJsonArray clips;
	for (int index = 0; index < 20; ++index) {
		clips.append(QJsonObject{{u"path"_s, u"/home/ana/Videos/Shorts/%1.mp4"_s.arg(index)},
					 {u"name"_s, u"Replay 2025-01-%1 short.mp4"_s.arg(index)}});
	}
	const QJsonArray choices{u"vtuber-bubble"_s, u"gameplay"_s, u"podcast"_s};
	return lineOf({{u"event"_s, u"status"_s},
		       {u"linked"_s, true},
		       {u"login"_s, u"ana"_s},
		       {u"layouts"_s, choices},
		       {u"styles"_s, choices},
		       {u"fonts"_s, choices}}) +
	       lineOf({{u"event"_s, u"progress"_s}, {u"phase"_s, u"download"_s}, {u"percent"_s, 40}}) +
	       lineOf({{u"event"_s, u"done"_s},
		       {u"formatted"_s, QJsonArray{u"/home/ana/Videos/Shorts/a.mp4"_s}},
		       {u"note"_s, u"captions from a file"_s}}) +
	       lineOf({{u"event"_s, u"recent"_s}, {u"folder"_s, u"/home/ana/Videos/Shorts"_s}, {u"items"_s, clips}});
}

QByteArray megabyteOfEvents()
{
	const QByteArray events = realisticEvents();
	return events.repeated((1 << 20) / events.size());
}

void bareParse(benchmark::State &state)
{
	const QByteArray bytes = megabyteOfEvents();
	const QByteArrayList lines = bytes.split('\n');
	while (state.KeepRunning()) {
		for (const QByteArray &line : lines) {
			benchmark::DoNotOptimize(QJsonDocument::fromJson(line).object());
		}
	}
	state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}
BENCHMARK(bareParse)->Unit(benchmark::kMillisecond);

int feed(const QByteArray &bytes, qsizetype chunk_bytes)
{
	EventStream stream;
	const QByteArrayView output(bytes);
	int count = 0;
	for (qsizetype begin = 0; begin < output.size(); begin += chunk_bytes) {
		stream.append(output.sliced(begin, qMin(chunk_bytes, output.size() - begin)));
		while (stream.next()) {
			++count;
		}
	}
	return count;
}

/// range(0): bytes per read.
void events(benchmark::State &state)
{
	const QByteArray bytes = megabyteOfEvents();
	while (state.KeepRunning()) {
		benchmark::DoNotOptimize(feed(bytes, state.range(0)));
	}
	state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}
BENCHMARK(events)->Arg(1)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);

/// One event of this size, newline included.
QByteArray hugeEvent(int64_t size_MiB)
{
	const qsizetype size_bytes = size_MiB * 1'048'576;
	QByteArray line = lineOf({{u"event"_s, u"done"_s}, {u"note"_s, QString()}});
	return line.insert(line.lastIndexOf('"'), size_bytes - line.size(), 'x');
}

void bareHugeEvent(benchmark::State &state)
{
	const QByteArray line = hugeEvent(state.range(0));
	if (!QJsonDocument::fromJson(line).isObject()) {
		state.SkipWithError("not read as an event");
	}
	while (state.KeepRunning()) {
		benchmark::DoNotOptimize(QJsonDocument::fromJson(line).object());
	}
	state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * line.size());
}
BENCHMARK(bareHugeEvent)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// range(0): MiB per line; range(1): bytes per read.
void hugeEvent(benchmark::State &state)
{
	const QByteArray line = hugeEvent(state.range(0));
	if (feed(line, state.range(1)) != 1) {
		state.SkipWithError("not read as one event");
	}
	while (state.KeepRunning()) {
		benchmark::DoNotOptimize(feed(line, state.range(1)));
	}
	state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * line.size());
}
BENCHMARK(hugeEvent)
	->ArgsProduct({{1, 10}, {1, 4096, 65536}})
	->ArgsProduct({{100, 1000}, {4096, 65536}})
	->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char *argv[])
{
	// Keep memory once allocated: fresh pages are not what this measures.
	mallopt(M_MMAP_MAX, 0);
	mallopt(M_TRIM_THRESHOLD, -1);
	benchmark::Initialize(&argc, argv);
	if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
		return 1;
	}
	benchmark::RunSpecifiedBenchmarks();
	benchmark::Shutdown();
	return 0;
}
