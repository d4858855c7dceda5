#include <QHelpEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolTip>

#include "cost.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"
#include "dock_host.hpp"
#include "host/hotkeys.hpp"
#include "host/opened_urls.hpp"
#include "hotkey/clip_hotkey.hpp"

#include <array>
#include <cstdint>

using namespace Qt::StringLiterals;

// Every way in which a text of somebody else gets into a label, a button, a list or a tooltip. The first letter of an
// input is the way; the second says how often the text is repeated ("1" once, "2" twice, … "D" 20 times), because what
// doubles with each repetition is what holds a user interface up; the rest is the text. It may open no file, take no
// more than a tenth of a second and 64 MiB, and widen nothing, when it comes, is laid out and painted.

namespace {
/// One way: the event that brings the text, and the widget whose tooltip shows it.
struct Way {
	char letter{};
	const char *command{};
	const char *slot{};
	QJsonObject (*event)(const QString &text){};
	enum class ToolTip : std::uint8_t { None, Update, Clips } toolTip{ToolTip::None};
};

QJsonObject event(const QString &kind, QJsonObject members)
{
	members[u"event"_s] = kind;
	return members;
}

QJsonObject error(const QString &text)
{
	return event(u"error"_s, {{u"error"_s, text}});
}

QJsonObject chat(const QString &member, const QString &text, bool granted)
{
	return event(u"chat"_s, {{u"enabled"_s, true}, {u"granted"_s, granted}, {member, text}});
}

QJsonObject clip(const QString &member, const QString &text)
{
	return event(u"recent"_s, {{u"items"_s, QJsonArray{QJsonObject{{member, text}}}}});
}

QJsonObject choices(const QString &text)
{
	const QJsonArray keys{text, text + u' '};
	return event(u"status"_s, {{u"linked"_s, true}, {u"layouts"_s, keys}, {u"styles"_s, keys}, {u"fonts"_s, keys}});
}

using Text = const QString &;

const std::array ways{
	Way{'a', "--link", "connectAccount", error},
	Way{'b', "--link", "connectAccount", [](Text text) { return event(u"code"_s, {{u"code"_s, text}}); }},
	Way{'c', "--process", "clipThat", error},
	Way{'d', "--process", "clipThat",
	    [](Text text) { return event(u"done"_s, {{u"formatted"_s, QJsonArray{text}}}); }},
	Way{'e', "--process", "clipThat", [](Text text) { return event(u"done"_s, {{u"note"_s, text}}); }},
	Way{'f', "--poll-triggers", "pollTriggers",
	    [](Text text) {
		    return event(u"triggers"_s, {{u"triggers"_s, QJsonArray{QJsonObject{{u"by"_s, text}}}}});
	    }},
	Way{'g', "--download-update", "installUpdate", error, Way::ToolTip::Update},
	Way{'h', "--download-update", "installUpdate",
	    [](Text text) { return event(u"downloaded"_s, {{u"latest"_s, text}}); }, Way::ToolTip::Update},
	Way{'i', "--check-update", "checkUpdate",
	    [](Text text) { return event(u"update"_s, {{u"update"_s, true}, {u"latest"_s, text}}); }},
	Way{'j', "--check-update", "checkUpdate",
	    [](Text text) { return event(u"update"_s, {{u"update"_s, true}, {u"notes"_s, text}}); },
	    Way::ToolTip::Update},
	Way{'k', "--chat-get", "loadChat", [](Text text) { return chat(u"error"_s, text, false); }},
	Way{'l', "--chat-get", "loadChat", [](Text text) { return chat(u"command"_s, text, true); }},
	Way{'m', "--chat-get", "loadChat", [](Text text) { return chat(u"consent_url"_s, text, false); }},
	Way{'n', "--status", "refreshStatus",
	    [](Text text) { return event(u"status"_s, {{u"linked"_s, true}, {u"login"_s, text}}); }},
	Way{'o', "--status", "refreshStatus", choices},
	Way{'p', "--recent", "refreshRecent", [](Text text) { return clip(u"name"_s, text); }},
	Way{'q', "--recent", "refreshRecent", [](Text text) { return clip(u"path"_s, text); }, Way::ToolTip::Clips},
};

/// The way that no event brings: the description of another hotkey on the keys of the default one.
constexpr char hotkeyWay = 'r';

QByteArray line(const QJsonObject &event)
{
	return QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
}

/// Shows the tooltip at this place of a widget, as resting the mouse there does, and takes it away again.
void rest(QWidget *widget, const QPoint &place)
{
	QHelpEvent help(QEvent::ToolTip, place, widget->mapToGlobal(place));
	QCoreApplication::sendEvent(widget, &help);
	FuzzDock::settle();
	QToolTip::hideText();
}

QPushButton *defaultHotkeyButton(const FuzzDock &dock)
{
	for (auto *button : dock->findChildren<QPushButton *>()) {
		if (button->text().startsWith(u"Use Ctrl+Shift+C")) {
			return button;
		}
	}
	qFatal("the dock has no button for the default hotkey");
}

void showByHotkey(const FuzzDock &dock, const QString &text)
{
	const obs_hotkey_id other = addForeignHotkey("fuzz.other", text.toUtf8().constData(), defaultCombination());
	dock.invoke("refreshHotkeyUi");
	QPushButton *button = defaultHotkeyButton(dock);
	rest(button, button->rect().center());
	button->click();
	obs_hotkey_unregister(other);
}

void showByEvent(const FuzzDock &dock, const Way &way, const QString &text)
{
	if (way.letter == 'f') {
		// Triggers are only polled after such an answer.
		dock.answer("--chat-get", "loadChat", line(chat(u"command"_s, u"!rune"_s, true)), true);
	}
	dock.answer(way.command, way.slot, line(way.event(text)), false);
	FuzzDock::settle();
	if (way.toolTip == Way::ToolTip::Update) {
		auto *button = dock->findChild<QPushButton *>(u"updateBtn"_s);
		rest(button, button->rect().center());
	} else if (way.toolTip == Way::ToolTip::Clips) {
		const auto *list = dock->findChild<QListWidget *>();
		rest(list->viewport(), list->visualItemRect(list->item(0)).center());
	}
}

void show(const FuzzDock &dock, char letter, const QString &text)
{
	if (letter == hotkeyWay) {
		showByHotkey(dock, text);
	}
	for (const Way &way : ways) {
		if (letter == way.letter) {
			showByEvent(dock, way, text);
		}
	}
	FuzzDock::settle();
	dock->grab();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	const QByteArray input = toBytes(data, size);
	if (input.size() < 3) {
		return -1;
	}
	const int times = (static_cast<uint8_t>(input[1]) - '1' + 256) % 64 + 1;
	const QString text = QString::fromUtf8(input.sliced(2)).repeated(times);

	const FuzzDock &dock = FuzzDock::fresh(true);
	const OpenedUrls openedUrls;
	{
		const CostWatch watch({.mayOpen = isOwnFile});
		show(dock, input[0], text);
	}
	const QString status = dock->findChild<QLabel *>(u"status"_s)->text();
	require(input[0] != 'a' || status == shownText(text), "the status line's text is what it was given");
	require(!dock.isWidened(), "the main window may be as narrow as before");
	require(openedUrls.list().isEmpty(), "no text is opened");
	lookForLeaks();
	return 0;
}
