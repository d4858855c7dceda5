#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "cost.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"
#include "dock_host.hpp"
#include "fake_frontend/fake_frontend.hpp"
#include "host/opened_urls.hpp"

#include <array>

using namespace Qt::StringLiterals;

// Each line of an input begins with a letter that names a helper command; the rest of the line is what the helper
// answers to the newest run of that command, which the dock starts first if none is in flight. After a capital letter
// the run ends; "o" is the user, who opens what there is to open, and "b" stops or starts the Replay Buffer. The dock
// is not visible: how it shows texts and pictures is for label_texts and preview_pictures.

namespace {
// Many lines that are each quick must not be taken for a hang.
constexpr int maxInput_lines = 40;

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

void openEverything(const FuzzDock &dock)
{
	dock.invoke("openFolder");
	auto *clips = dock->findChild<QListWidget *>();
	if (clips->count() > 0) {
		Q_EMIT clips->itemDoubleClicked(clips->item(0));
	}
}

void toggleReplayBuffer(const FuzzDock &dock)
{
	frontend().replayBufferActive = !frontend().replayBufferActive;
	frontend().replayBufferActive ? dock->onReplayBufferStarted() : dock->onReplayBufferStopped();
}

void requireOrder(const FuzzDock &dock)
{
	const auto *status = dock->findChild<QLabel *>(u"status"_s);
	require(status->styleSheet() == u"color:#ff6b81" || status->styleSheet() == u"color:#8a90a6",
		"the status line has one of its two colours");
	const auto *updateButton = dock->findChild<QPushButton *>(u"updateBtn"_s);
	require(updateButton->text().size() <= maxShownText + 1 && updateButton->toolTip().size() <= maxShownText + 1,
		"the update button's texts stay short enough to be laid out");
}

void perform(const FuzzDock &dock, const QByteArray &line)
{
	const char letter = line.isEmpty() ? '\0' : line[0];
	if (letter == 'o') {
		openEverything(dock);
	} else if (letter == 'b') {
		toggleReplayBuffer(dock);
	}
	for (const Command &command : commands) {
		const char capital = static_cast<char>(command.letter - 'a' + 'A');
		if (letter == command.letter || letter == capital) {
			dock.answer(command.name, command.slot, line.sliced(1) + '\n', letter == capital);
		}
	}
	FuzzDock::settle();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	const FuzzDock &dock = FuzzDock::fresh(false);
	const OpenedUrls openedUrls;
	const CostBounds texts{.mayOpen = isOwnFile};
	const CostBounds pictures{.mayOpen = [](const char *, int) { return true; }};
	QByteArray rest = toBytes(data, size);
	for (int line = 0; line < maxInput_lines && !rest.isEmpty(); ++line) {
		const QByteArray next = takeLine(rest);
		{
			const CostWatch watch(next.startsWith('v') || next.startsWith('V') ? pictures : texts);
			perform(dock, next);
		}
		requireOrder(dock);
	}
	lookForLeaks();
	return 0;
}
