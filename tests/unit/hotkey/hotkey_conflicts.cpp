#include <QTest>

#include "host/hotkey_test.hpp"
#include "host/hotkeys.hpp"
#include "host/test_program.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_conflicts.hpp"

using namespace Qt::StringLiterals;

class HotkeyConflictsTest : public HotkeyTest {
	Q_OBJECT

private Q_SLOTS:
	void conflictsAreExactMatchesOfOthers()
	{
		bindHotkey(clipHotkeyId(), {{controlKey | shiftKey, OBS_KEY_C}});
		QCOMPARE(hotkeyConflicts({controlKey | shiftKey, OBS_KEY_C}), QStringList());

		addForeignHotkey("test.same", "Start Recording", {controlKey | shiftKey, OBS_KEY_C});
		addForeignHotkey("test.more", "More", {controlKey | shiftKey | altKey, OBS_KEY_C});
		addForeignHotkey("test.less", "Less", {controlKey, OBS_KEY_C});
		addForeignHotkey("test.key", "Key", {controlKey | shiftKey, OBS_KEY_D});
		QCOMPARE(hotkeyConflicts({controlKey | shiftKey, OBS_KEY_C}), QStringList{u"Start Recording"_s});

		addForeignHotkey("test.again", "Start Recording", {controlKey | shiftKey, OBS_KEY_C});
		addForeignHotkey("test.umlaut", "Größe %1", {controlKey | shiftKey, OBS_KEY_C});
		QCOMPARE(hotkeyConflicts({controlKey | shiftKey, OBS_KEY_C}),
			 QStringList({u"Start Recording"_s, u"Start Recording"_s, u"Größe %1"_s}));
	}

	void aHotkeyWithoutDescriptionConflictsAsAnEmptyText()
	{
		addForeignHotkey("test.nameless", "", {altKey, OBS_KEY_X});
		QCOMPARE(hotkeyConflicts({altKey, OBS_KEY_X}), QStringList{QString()});
	}
};

KESTRUNE_TEST(HotkeyConflictsTest)
#include "hotkey_conflicts.moc"
