#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"

/// Setting the hotkey by pressing it, and the warnings about others on the same keys.
class HotkeySectionTest : public DockTest {
	Q_OBJECT

	QPushButton *setButton_{nullptr};

	static QStringList bindings() { return boundCombinations(findHotkey("kestrune.clip_that")->id); }
	QString shown() const { return child<QLabel>(u"hotkeyLabel"_s)->text(); }
	bool capturing() const { return QWidget::keyboardGrabber() == setButton_; }

	void startCapture() const { QTest::mouseClick(setButton_, Qt::LeftButton); }

	/// A key press as it comes from the keyboard: to whichever widget has grabbed it. Answers whether it was taken.
	bool press(int key, Qt::KeyboardModifiers modifiers = {}) const
	{
		QKeyEvent event(QEvent::KeyPress, key, modifiers);
		event.ignore();
		return QCoreApplication::sendEvent(setButton_, &event);
	}

	/// A dock whose default combination belongs to these hotkeys as well.
	void loadWithForeignHotkeys(const QByteArrayList &descriptions)
	{
		cleanup();
		DockTest::init();
		for (const QByteArray &description : descriptions) {
			addForeignHotkey(QByteArray("test." + description).constData(), description.constData(),
					 {INTERACT_CONTROL_KEY | INTERACT_SHIFT_KEY, OBS_KEY_C});
		}
		QVERIFY(load());
		setButton_ = button(u"Set hotkey"_s);
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		QVERIFY(load());
		setButton_ = button(u"Set hotkey"_s);
	}

	void offersTheDefaultWhileUnbound()
	{
		QCOMPARE(shown(), u"Hotkey: not set"_s);
		const QPushButton *offer = button(u"Use Ctrl+Shift+C"_s);
		QVERIFY(!offer->isHidden());
		QCOMPARE(offer->toolTip(), u"Suggested default"_s);

		bindHotkey(findHotkey("kestrune.clip_that")->id, {{0, OBS_KEY_F1}, {0, OBS_KEY_F2}});
		invoke("refreshHotkeyUi");
		QCOMPARE(shown(), u"Hotkey: F1, F2"_s);
		QCOMPARE(setButton_->text(), u"Change"_s);
		QVERIFY(offer->isHidden());

		bindHotkey(findHotkey("kestrune.clip_that")->id, {});
		invoke("refreshHotkeyUi");
		QCOMPARE(shown(), u"Hotkey: not set"_s);
		QCOMPARE(setButton_->text(), u"Set hotkey"_s);
		QVERIFY(!offer->isHidden());
	}

	void aCaptureTakesTheKeyboard()
	{
		QVERIFY(!capturing());
		startCapture();
		QVERIFY(capturing());
		QCOMPARE(setButton_->text(), u"Press keys… (Esc cancels)"_s);
	}

	void modifiersAloneKeepTheCaptureOpen()
	{
		startCapture();
		QVERIFY(press(Qt::Key_Shift, Qt::ShiftModifier));
		QVERIFY(press(Qt::Key_Control, Qt::ShiftModifier | Qt::ControlModifier));
		QVERIFY(press(Qt::Key_Alt, Qt::AltModifier));
		QVERIFY(press(Qt::Key_Meta, Qt::MetaModifier));
		QVERIFY(capturing());
		QCOMPARE(setButton_->text(), u"Press keys… (Esc cancels)"_s);
		QCOMPARE(bindings(), QStringList());

		QVERIFY(press(Qt::Key_C, Qt::ShiftModifier | Qt::ControlModifier));
		QVERIFY(!capturing());
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});
		QCOMPARE(shown(), u"Hotkey: Ctrl+Shift+C"_s);
		QCOMPARE(setButton_->text(), u"Change"_s);
		QVERIFY(statusIs(u"Hotkey set: Ctrl+Shift+C (also in Settings → Hotkeys)."_s, informationColour));
	}

	void bindsWhatIsPressed_data()
	{
		QTest::addColumn<int>("key");
		QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
		QTest::addColumn<QString>("binding");
		QTest::addColumn<QString>("text");
		const auto row = [](int key, Qt::KeyboardModifiers modifiers, const QString &binding,
				    const QString &text) {
			QTest::newRow(qPrintable(text)) << key << modifiers << binding << text;
		};
		row(Qt::Key_K, {}, u"0 OBS_KEY_K"_s, u"K"_s);
		row(Qt::Key_F5, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier | Qt::MetaModifier,
		    u"142 OBS_KEY_F5"_s, u"Ctrl+Alt+Shift+Win+F5"_s);
		row(Qt::Key_7, Qt::AltModifier, u"8 OBS_KEY_7"_s, u"Alt+7"_s);
		row(Qt::Key_Space, Qt::ControlModifier, u"4 OBS_KEY_SPACE"_s, u"Ctrl+SPACE"_s);
	}
	void bindsWhatIsPressed()
	{
		QFETCH(int, key);
		QFETCH(Qt::KeyboardModifiers, modifiers);
		QFETCH(QString, binding);
		QFETCH(QString, text);
		startCapture();
		QVERIFY(press(key, modifiers));
		QCOMPARE(bindings(), QStringList{binding});
		QCOMPARE(shown(), u"Hotkey: "_s + text);
		QVERIFY(statusIs(u"Hotkey set: "_s + text + u" (also in Settings → Hotkeys)."_s, informationColour));
		QCOMPARE(preferences()[u"hotkey"][0][u"key"].toString(), binding.section(u' ', 1));
		QCOMPARE(preferences()[u"hotkey_offered"].toBool(), true);
	}

	void shortcutsOfObsCanBeBound()
	{
		QWidget *window = dock()->window();
		window->activateWindow();
		QVERIFY(QTest::qWaitForWindowActive(window, patience_ms));
		const QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), window);
		const QSignalSpy menuItem(&shortcut, &QShortcut::activated);
		const auto pressOnKeyboard = [window] {
			QTest::keyClick(window->windowHandle(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
		};
		pressOnKeyboard();
		QCOMPARE(menuItem.size(), 1);

		startCapture();
		pressOnKeyboard();
		QCOMPARE(menuItem.size(), 1);
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});

		pressOnKeyboard();
		QCOMPARE(menuItem.size(), 2);
	}

	void aNewBindingReplacesAllOthers()
	{
		bindHotkey(findHotkey("kestrune.clip_that")->id, {{0, OBS_KEY_F1}, {0, OBS_KEY_F2}});
		startCapture();
		press(Qt::Key_F3);
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F3"_s});
	}

	void escapeCancelsWithoutAWord()
	{
		startCapture();
		QVERIFY(press(Qt::Key_Escape));
		QVERIFY(!capturing());
		QCOMPARE(bindings(), QStringList());
		QCOMPARE(setButton_->text(), u"Set hotkey"_s);
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
		QVERIFY(!QFile::exists(preferencesPath()));

		bindHotkey(findHotkey("kestrune.clip_that")->id, {{0, OBS_KEY_F1}});
		startCapture();
		press(Qt::Key_Escape, Qt::ShiftModifier);
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F1"_s});
		QCOMPARE(setButton_->text(), u"Change"_s);
	}

	void anUnusableKeyEndsTheCaptureWithAMessage()
	{
		startCapture();
		QVERIFY(press(Qt::Key_Delete, Qt::ControlModifier));
		QVERIFY(!capturing());
		QCOMPARE(bindings(), QStringList());
		QCOMPARE(setButton_->text(), u"Set hotkey"_s);
		QVERIFY(statusIs(u"That key can't be used as a hotkey; try a letter or F-key with Ctrl/Shift/Alt."_s,
				 errorColour));
	}

	void thePlatformsOwnKeyCodeCounts()
	{
		startCapture();
		const auto code = static_cast<quint32>(obs_key_to_virtual_key(OBS_KEY_DELETE));
		QKeyEvent event(QEvent::KeyPress, Qt::Key_Delete, Qt::ControlModifier, 0, code, 0);
		QCoreApplication::sendEvent(setButton_, &event);
		QCOMPARE(bindings(), QStringList{u"4 OBS_KEY_DELETE"_s});
	}

	void keysAreLeftAloneOutsideACapture()
	{
		press(Qt::Key_K, Qt::ControlModifier);
		QCOMPARE(bindings(), QStringList());
		startCapture();
		press(Qt::Key_F3);
		press(Qt::Key_F4);
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F3"_s});
	}

	void keyReleasesAreLeftAlone()
	{
		startCapture();
		QKeyEvent release(QEvent::KeyRelease, Qt::Key_K, Qt::NoModifier);
		QCoreApplication::sendEvent(setButton_, &release);
		QVERIFY(capturing());
		QCOMPARE(bindings(), QStringList());
		press(Qt::Key_Escape);
	}

	void theDefaultButtonLeavesACaptureGoing()
	{
		startCapture();
		QTest::mouseClick(button(u"Use Ctrl+Shift+C"_s), Qt::LeftButton);
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});
		QVERIFY(capturing());
		QCOMPARE(setButton_->text(), u"Press keys… (Esc cancels)"_s);
		press(Qt::Key_F6);
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F6"_s});
	}

	void warnsAboutAnotherHotkeyOnTheDefault()
	{
		loadWithForeignHotkeys({"Start Recording"});
		QPushButton *offer = button(u"Use Ctrl+Shift+C (in use!)"_s);
		QVERIFY(offer);
		QCOMPARE(offer->toolTip(), u"Warning: Ctrl+Shift+C is already used by Start Recording"_s);

		QTest::mouseClick(offer, Qt::LeftButton);
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});
		QCOMPARE(preferences()[u"hotkey_offered"].toBool(), true);
		QVERIFY(statusIs(
			u"Hotkey set: Ctrl+Shift+C, but it is also used by \"Start Recording\"; both will fire. "
			"Pick another with Set hotkey."_s,
			errorColour));
	}

	void namesEveryOtherHotkey()
	{
		loadWithForeignHotkeys({"A", "%2 B"});
		startCapture();
		press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
		QVERIFY(statusIs(u"Hotkey set: Ctrl+Shift+C, but it is also used by \"A\", \"%2 B\"; both will fire. "
				 "Pick another with Set hotkey."_s,
				 errorColour));
		QCOMPARE(button(u"Use Ctrl+Shift+C (in use!)"_s)->toolTip(),
			 u"Warning: Ctrl+Shift+C is already used by A, %2 B"_s);
	}

	void aDockThatGoesDuringACaptureFreesTheKeyboard()
	{
		startCapture();
		QVERIFY(capturing());
		destroyMainWindow();
		QVERIFY(!QWidget::keyboardGrabber());
	}
};

KESTRUNE_TEST(HotkeySectionTest)
#include "hotkey_section.moc"
