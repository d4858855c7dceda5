#include <QAccessible>
#include <QJsonArray>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>

#include "host/dock_test.hpp"

#include <algorithm>

/// Keyboard access and what screen readers say.
class AccessibilityTest : public DockTest {
	Q_OBJECT

	using Control = std::pair<QString, QAccessible::Role>;

	/// The widget's name as screen readers say it. On Linux they read the label of a combo box, because the box's
	/// own name is the selected entry.
	static QString nameOf(QWidget *widget)
	{
		const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
		const auto labels = interface->relations(QAccessible::Label);
		return (labels.isEmpty() ? interface : labels.first().first)->text(QAccessible::Name);
	}

	static QAccessible::Role roleOf(QWidget *widget)
	{
		return QAccessible::queryAccessibleInterface(widget)->role();
	}

	/// Editors inside spin boxes, for example, do not count.
	static bool isTabStop(const QWidget *widget)
	{
		return (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy() && widget->isVisible() &&
		       widget->isEnabled();
	}

	/// The dock's controls in reading order.
	QWidgetList visibleControls() const
	{
		QWidgetList controls;
		for (QWidget *widget : dock()->findChildren<QWidget *>()) {
			if (isTabStop(widget)) {
				controls << widget;
			}
		}
		std::ranges::stable_sort(controls, {}, [this](const QWidget *widget) {
			const QPoint corner = widget->mapTo(dock(), QPoint());
			return std::pair(corner.y(), corner.x());
		});
		return controls;
	}

	QList<Control> described(const QWidgetList &widgets) const
	{
		QList<Control> controls;
		for (QWidget *widget : widgets) {
			controls << Control(nameOf(widget), roleOf(widget));
		}
		return controls;
	}

	/// The widgets that Tab visits, until it is back at the first. A text with a link is one stop, although Tab
	/// visits text and link.
	static QWidgetList tabOrder(QWidget *first)
	{
		QWidgetList order{first};
		first->setFocus();
		while (order.size() < 100) {
			QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
			QWidget *next = QApplication::focusWidget();
			if (next == first) {
				break;
			}
			if (next != order.last()) {
				order << next;
			}
		}
		return order;
	}

	void answerChat(const QJsonObject &members)
	{
		QJsonObject event = members;
		event[u"event"] = u"chat"_s;
		helper().on(u"--chat-get"_s, HelperScript().event(event));
	}

	/// Shows the dock with all sections open, in the active window.
	void showWhole() const
	{
		for (QToolButton *toggle : dock()->findChildren<QToolButton *>()) {
			if (toggle->isCheckable()) {
				toggle->setChecked(true);
			}
		}
		QWidget *window = dock()->window();
		dock()->parentWidget()->show();
		window->resize(500, 1400);
		window->activateWindow();
		QVERIFY(QTest::qWaitForWindowActive(window));
	}

private Q_SLOTS:
	void tabGoesThroughEveryControlFromTopToBottom()
	{
		answerChat({{u"enabled"_s, true}, {u"consent_url"_s, u"https://allow.example/"_s}});
		helper().on(u"--check-update"_s,
			    HelperScript().event(
				    {{u"event"_s, u"update"_s}, {u"update"_s, true}, {u"latest"_s, u"1.0.7"_s}}));
		QVERIFY(loadReady());
		invoke("checkUpdate");
		QTRY_VERIFY(!child<QPushButton>(u"updateBtn"_s)->isHidden());
		QTRY_VERIFY(label(chatText()));
		QTRY_COMPARE(nameOf(label(chatText())), u"One more step: allow Kestrune to read your Twitch chat. "
							"It switches on by itself afterwards."_s);
		showWhole();

		const QWidgetList controls = visibleControls();
		const QList<Control> expected{
			{u"Clip that"_s, QAccessible::Button},
			{u"Update available v1.0.7 — Update now"_s, QAccessible::Button},
			{u"Kestrune settings"_s, QAccessible::Client},
			{u"Clip length"_s, QAccessible::ComboBox},
			{u"Layout & captions"_s, QAccessible::CheckBox},
			{u"Layout"_s, QAccessible::ComboBox},
			{u"Caption style"_s, QAccessible::ComboBox},
			{u"Font"_s, QAccessible::ComboBox},
			{u"Caption position"_s, QAccessible::ComboBox},
			{u"Hotkey & Stream Deck"_s, QAccessible::CheckBox},
			{u"Use Ctrl+Shift+C"_s, QAccessible::Button},
			{u"Set hotkey"_s, QAccessible::Button},
			{u"Twitch chat command (mods + you)"_s, QAccessible::CheckBox},
			{u"Enabled"_s, QAccessible::CheckBox},
			{u"Command"_s, QAccessible::EditableText},
			{u"Cooldown"_s, QAccessible::SpinBox},
			{u"Max per stream"_s, QAccessible::SpinBox},
			{u"Save chat settings"_s, QAccessible::Button},
			{u"One more step: allow Kestrune to read your Twitch chat. "
			 "It switches on by itself afterwards."_s,
			 QAccessible::StaticText},
			{u"Recent clips & output folder"_s, QAccessible::CheckBox},
			{u"Recent clips"_s, QAccessible::List},
			{u"Open output folder"_s, QAccessible::Button},
		};
		QCOMPARE(described(controls), expected);
		QCOMPARE(described(tabOrder(controls.first())), expected);
	}

	void tabReachesTheConnectButtonWhileThereIsNoAccount()
	{
		QVERIFY(load());
		showWhole();
		const QWidgetList controls = visibleControls();
		QCOMPARE(nameOf(controls.value(0)), u"Kestrune settings"_s);
		QCOMPARE(nameOf(controls.value(1)), u"Connect account"_s);
		QCOMPARE(described(tabOrder(controls.first())), described(controls));
	}

	void aSectionTellsWhetherItIsOpen()
	{
		QVERIFY(load());
		auto *toggle = child<QToolButton>(u"chatBoxToggle"_s);
		const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(toggle);
		QVERIFY(!interface->state().checked);
		toggle->click();
		QVERIFY(interface->state().checked);
	}

	void textsReadWithoutTheirFormatting()
	{
		QVERIFY(load());
		QCOMPARE(nameOf(child<QLabel>(u"streamDeck"_s)),
			 u"Stream Deck / Touch Portal / Streamer.bot: send the obs-websocket vendor request "
			 "Kestrune → ClipThat."_s);
		QCOMPARE(nameOf(child<QLabel>(u"preview"_s)), u"Preview"_s);
	}

	void enterOpensTheChosenClip()
	{
		QVERIFY(load());
		helper().on(u"--recent"_s,
			    HelperScript().event(
				    {{u"event"_s, u"recent"_s}, {u"items"_s, QJsonArray{clip(u"a"_s), clip(u"b"_s)}}}));
		invoke("refreshRecent");
		auto *list = child<QWidget>(u"recentSection"_s)->findChild<QListWidget *>();
		QTRY_COMPARE(list->count(), 2);
		showWhole();
		QTest::keyClick(dock(), Qt::Key_Return);
		QVERIFY(openedUrls().isEmpty());
		list->setFocus();
		QTest::keyClick(list, Qt::Key_Down);
		QTest::keyClick(list, Qt::Key_Return);
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl::fromLocalFile(u"/s/b"_s)});
		QTest::keyClick(list, Qt::Key_Up);
		QTest::keyClick(list, Qt::Key_Enter, Qt::KeypadModifier);
		QCOMPARE(openedUrls().value(1), QUrl::fromLocalFile(u"/s/a"_s));
	}

	void enterFollowsTheConsentLink()
	{
		answerChat({{u"enabled"_s, true}, {u"consent_url"_s, u"https://allow.example/"_s}});
		QVERIFY(loadReady());
		QTRY_VERIFY(label(chatText()));
		showWhole();
		button(u"Save chat settings"_s)->setFocus();
		for (int stop = 0; stop < 2; ++stop) { // the text, then its link
			QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
			QCOMPARE(QApplication::focusWidget(), label(chatText()));
		}
		QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl(u"https://allow.example/"_s)});
	}

private:
	static QString chatText()
	{
		return u"One more step: <a href=\"https://allow.example/\">allow Kestrune to read your Twitch chat</a>. "
		       "It switches on by itself afterwards."_s;
	}

	static QJsonObject clip(const QString &name) { return {{u"name"_s, name}, {u"path"_s, u"/s/"_s + name}}; }
};

KESTRUNE_TEST(AccessibilityTest)
#include "accessibility.moc"
