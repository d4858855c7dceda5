#include <QCoreApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"
#include "frontend/frontend.hpp"
#include "host.hpp"
#include "host/fake_runner.hpp"
#include "host/opened_urls.hpp"

#include <array>

using namespace Qt::StringLiterals;

// Each line of an input begins with a letter that names a helper command; the rest of the line is what the helper
// answers to the newest run of that command, which the dock starts first if none is in flight. After a capital letter
// the run ends; "o" is the user, who opens what there is to open.

namespace {
// Many lines that are each quick must not be taken for a hang.
constexpr int longestInput_lines = 40;

struct Command {
	char letter{};
	const char *name{};
	/// What starts such a run.
	const char *slot{};
};

constexpr std::array commands{
	Command{'s', "--status", "refreshStatus"},     Command{'l', "--link", "connectAccount"},
	Command{'p', "--process", "clipThat"},         Command{'v', "--preview", "refreshPreview"},
	Command{'r', "--recent", "refreshRecent"},     Command{'g', "--chat-get", "loadChat"},
	Command{'h', "--chat-set", "saveChat"},        Command{'t', "--poll-triggers", "pollTriggers"},
	Command{'u', "--check-update", "checkUpdate"}, Command{'d', "--download-update", "installUpdate"},
};

void answerNewestRun(const ShownDock &dock, const Command &command, const QByteArray &output, bool ends)
{
	const QString name = QString::fromLatin1(command.name);
	FakeRunner &helper = dock.helper();
	if (!helper.runInFlight(name)) {
		dock.invoke(command.slot);
		dock->onReplaySaved();
	}
	const std::shared_ptr<FakeRunner::Run> run = helper.runInFlight(name);
	if (!run) {
		return; // not now, says the dock
	}
	FakeRunner::answer(*run, output + '\n');
	if (ends) {
		helper.end(run, 0);
	}
}

void openEverything(const ShownDock &dock)
{
	dock.invoke("openFolder");
	auto *clips = dock->findChild<QListWidget *>();
	if (clips->count() > 0) {
		Q_EMIT clips->itemDoubleClicked(clips->item(0));
	}
}

void requireOrder(const ShownDock &dock)
{
	const auto *status = dock->findChild<QLabel *>(u"status"_s);
	require(status->styleSheet() == u"color:#ff6b81" || status->styleSheet() == u"color:#8a90a6",
		"the status line has one of its two colours");
	const auto *updateButton = dock->findChild<QPushButton *>(u"updateBtn"_s);
	require(updateButton->text().size() <= longestShownText + 1 &&
			updateButton->toolTip().size() <= longestShownText + 1,
		"the update button's texts stay short enough to be laid out");
}

void perform(const ShownDock &dock, const QByteArray &line)
{
	const char letter = line.isEmpty() ? '\0' : line[0];
	if (letter == 'o') {
		openEverything(dock);
	}
	for (const Command &command : commands) {
		const char capital = static_cast<char>(command.letter - 'a' + 'A');
		if (letter == command.letter || letter == capital) {
			answerNewestRun(dock, command, line.sliced(1), letter == capital);
		}
	}
	QCoreApplication::processEvents();
	requireOrder(dock);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHost();
	const OpenedUrls openedUrls;
	const ShownDock dock;
	frontend().replayBufferActive = true;
	frontend().lastReplay = "/videos/replay.mkv";

	QByteArray rest = toBytes(data, size);
	for (int line = 0; line < longestInput_lines && !rest.isEmpty(); ++line) {
		perform(dock, takeLine(rest));
	}
	return 0;
}
