// What long answers of a helper and many of them cost the dock's sections, by their number: from the line of JSON to
// the widgets.

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QListWidget>
#include <QVBoxLayout>

#include "chat/chat_section.hpp"
#include "clip/account.hpp"
#include "dock/choices_section.hpp"
#include "dock/recent_section.hpp"
#include "dock/status_line.hpp"
#include "host/fake_runner.hpp"
#include "process_figures.hpp"

#include <benchmark/benchmark.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {
constexpr int pollsOfADay = 24 * 3600 / 5;

/// A window that shows the widgets of one section.
struct Window {
	QWidget widget{};
	QVBoxLayout *layout{new QVBoxLayout(&widget)};
	FakeRunner helper{};

	Window() { widget.show(); }

	/// Answers the newest run of this command, ends it, and lets the widgets show what came.
	void answer(const QString &command, const QByteArray &line)
	{
		const auto run = helper.runInFlight(command);
		FakeRunner::answer(*run, line);
		helper.end(run, 0);
		QCoreApplication::processEvents();
	}
};

QByteArray lineWith(const char *kind, const char *member, qint64 count,
		    const std::function<QJsonValue(const QString &number)> &element)
{
	QJsonArray elements;
	for (qint64 number = 0; number < count; ++number) {
		elements << element(QString::number(number));
	}
	const QJsonObject event{{u"event"_s, QLatin1StringView(kind)}, {QLatin1StringView(member), elements}};
	return QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
}

void recentClips(benchmark::State &state)
{
	Window window;
	RecentSection recent(window.layout, &window.widget, window.helper);
	window.widget.findChild<QWidget *>(u"recentSection"_s)->show();
	const QByteArray line = lineWith("recent", "items", state.range(0), [](const QString &number) {
		const QString name = u"short-%1.mp4"_s.arg(number);
		return QJsonObject{{u"name"_s, name}, {u"path"_s, u"/shorts/"_s + name}};
	});
	while (state.KeepRunning()) {
		recent.refreshRecent();
		window.answer(u"--recent"_s, line);
	}
	if (window.widget.findChild<QListWidget *>()->count() != state.range(0)) {
		state.SkipWithError("the clips are not shown");
	}
}

void choices(benchmark::State &state)
{
	Window window;
	ChoicesSection section(window.layout, &window.widget, window.helper);
	window.widget.findChild<QWidget *>(u"styleSection"_s)->show();
	const QByteArray line =
		lineWith("status", "fonts", state.range(0), [](const QString &number) { return u"font-"_s + number; });
	while (state.KeepRunning()) {
		section.refill(QJsonDocument::fromJson(line).object());
		section.decorateChoices();
		QCoreApplication::processEvents();
	}
}

/// The chat section of a linked account, with the command on.
struct Chat {
	Window window{};
	StatusLine status{};
	qint64 clips{0};
	Account account{window.layout, window.helper, status, [] {}, [] {}};
	ChatSection section{window.layout, &window.widget, window.helper, account,
			    [this](const QString &) { ++clips; }};

	Chat()
	{
		account.applyStatus({{u"linked"_s, true}});
		section.loadChat();
		window.answer(u"--chat-get"_s, R"({"event":"chat","enabled":true,"granted":true,"command":"!rune"})"
					       "\n");
	}
	void poll(const QByteArray &line)
	{
		section.pollTriggers();
		window.answer(u"--poll-triggers"_s, line);
	}
};

void triggers(benchmark::State &state)
{
	Chat chat;
	const QByteArray line = lineWith("triggers", "triggers", state.range(0), [](const QString &number) {
		return QJsonObject{{u"by"_s, u"mod_"_s + number}};
	});
	while (state.KeepRunning()) {
		chat.poll(line);
	}
	if (chat.clips != state.iterations()) {
		state.SkipWithError("not one clip per answer");
	}
}

/// All polls of one day and then of another: by then, what is kept once is there.
void polls(benchmark::State &state)
{
	Chat chat;
	const auto pollOften = [&] {
		for (qint64 poll = 0; poll < state.range(0); ++poll) {
			chat.poll("{\"event\":\"triggers\",\"triggers\":[]}\n");
		}
	};
	pollOften();
	const qint64 before_KiB = processFigures().memory_KiB;
	while (state.KeepRunning()) {
		pollOften();
	}
	state.counters["grown_KiB"] = static_cast<double>(processFigures().memory_KiB - before_KiB);
}

BENCHMARK(recentClips)->RangeMultiplier(10)->Range(100, 10'000);
BENCHMARK(choices)->RangeMultiplier(10)->Range(10, 1000);
BENCHMARK(triggers)->RangeMultiplier(10)->Range(1, 100);
BENCHMARK(polls)->Arg(pollsOfADay / 100)->Arg(pollsOfADay / 10)->Arg(pollsOfADay);
} // namespace

int main(int argc, char *argv[])
{
	const QApplication application(argc, argv);
	benchmark::Initialize(&argc, argv);
	if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
		return 1;
	}
	benchmark::RunSpecifiedBenchmarks();
	benchmark::Shutdown();
	return 0;
}
