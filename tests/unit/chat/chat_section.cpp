#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include "dock/shown_text.hpp"
#include "host/dock_test.hpp"

#include <algorithm>

class ChatSectionTest : public DockTest {
	Q_OBJECT

	QWidget *section() const { return child<QWidget>(u"chatBox"_s); }
	QCheckBox *enabled() const { return section()->findChild<QCheckBox *>(); }
	QLineEdit *command() const
	{
		const QList<QLineEdit *> edits = section()->findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly);
		return edits.value(0);
	}
	QSpinBox *cooldown() const { return section()->findChildren<QSpinBox *>().value(0); }
	QSpinBox *cap() const { return section()->findChildren<QSpinBox *>().value(1); }
	QLabel *state() const
	{
		const QList<QLabel *> labels = section()->findChildren<QLabel *>();
		const auto found = std::ranges::find_if(labels, &QLabel::openExternalLinks);
		return found == labels.end() ? nullptr : *found;
	}
	/// Found by its 5 s interval.
	bool isPolling() const
	{
		const QList<QTimer *> timers = dock()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
		return std::ranges::any_of(timers, [](const QTimer *timer) {
			return timer->isActive() && timer->interval() == 5000 && !timer->isSingleShot();
		});
	}

	static QJsonObject chat(QJsonObject members)
	{
		members[u"event"] = u"chat"_s;
		return members;
	}
	/// A ready dock after its own first query of the settings.
	bool loadSettled()
	{
		return loadReady() &&
		       QTest::qWaitFor(
			       [this] { return helper().count(u"--chat-get"_s) == 1 && !isRunning(u"--chat-get"_s); },
			       patience_ms);
	}

	/// Has the helper answer a query of the settings.
	void answer(const QJsonObject &event)
	{
		helper().on(u"--chat-get"_s, HelperScript().event(event));
		const qsizetype before = helper().count(u"--chat-get"_s);
		QVERIFY(invoke("loadChat"));
		QTRY_COMPARE(helper().count(u"--chat-get"_s), before + 1);
		QTRY_VERIFY(!isRunning(u"--chat-get"_s));
	}

private Q_SLOTS:
	void asksNothingWithoutAnAccount()
	{
		QVERIFY(load());
		QVERIFY(invoke("loadChat"));
		QVERIFY(!isRunning(u"--chat-get"_s));
		QCOMPARE(state()->text(), u"Off. Connect your Twitch-linked account to use it."_s);
		QVERIFY(!isPolling());
	}

	void asksAfterEachStatusWithAnAccount()
	{
		QVERIFY(loadReady());
		QTRY_COMPARE(helper().runs(u"--chat-get"_s), QList<QStringList>({{u"--chat-get"_s}}));
	}

	void showsTheSettings()
	{
		QVERIFY(loadSettled());
		answer(chat({{u"command"_s, u"!moment"_s},
			     {u"enabled"_s, true},
			     {u"granted"_s, true},
			     {u"cooldown_s"_s, 45},
			     {u"per_stream_cap"_s, 0},
			     {u"stream_count"_s, 2}}));
		QVERIFY(enabled()->isChecked());
		QCOMPARE(command()->text(), u"!moment"_s);
		QCOMPARE(cooldown()->value(), 45);
		QCOMPARE(cap()->text(), u"No cap"_s);
		QCOMPARE(state()->text(), u"On: mods can type <b>!moment</b> (2 used this stream)."_s);
		QVERIFY(isPolling());
	}

	void fillsMissingSettingsWithTheirDefaults()
	{
		QVERIFY(loadSettled());
		cooldown()->setValue(77);
		cap()->setValue(0);
		enabled()->setChecked(true);
		answer(chat({{u"command"_s, QJsonValue()}}));
		QVERIFY(!enabled()->isChecked());
		QCOMPARE(command()->text(), QString());
		QCOMPARE(cooldown()->value(), 30);
		QCOMPARE(cap()->value(), 10);
		QCOMPARE(state()->text(), u"Off."_s);
	}

	void keepsNumbersInTheirRanges()
	{
		QVERIFY(loadSettled());
		answer(chat({{u"command"_s, u"!a"_s}, {u"cooldown_s"_s, 3}, {u"per_stream_cap"_s, 5000}}));
		QCOMPARE(cooldown()->value(), 10);
		QCOMPARE(cap()->value(), 100);
		answer(chat({{u"command"_s, u"!a"_s}, {u"cooldown_s"_s, 1e18}, {u"per_stream_cap"_s, -1}}));
		QCOMPARE(cooldown()->value(), 30);
		QCOMPARE(cap()->value(), 0);
	}

	void anAnswerWithoutSettingsLeavesTheInput()
	{
		QVERIFY(loadSettled());
		command()->setText(u"!mine"_s);
		answer(chat({{u"enabled"_s, true}, {u"granted"_s, true}, {u"cooldown_s"_s, 99}}));
		QVERIFY(!enabled()->isChecked());
		QCOMPARE(command()->text(), u"!mine"_s);
		QCOMPARE(cooldown()->value(), 30);
		QCOMPARE(state()->text(), u"On: mods can type <b></b> (0 used this stream)."_s);
		QVERIFY(isPolling());
	}

	void pollingEndsWithTheNextAnswerThatIsNotOn_data()
	{
		QTest::addColumn<QJsonObject>("next");
		QTest::newRow("off") << QJsonObject{{u"enabled"_s, false}, {u"granted"_s, true}};
		QTest::newRow("not granted") << QJsonObject{{u"enabled"_s, true}};
		QTest::newRow("nothing said") << QJsonObject();
	}
	void pollingEndsWithTheNextAnswerThatIsNotOn()
	{
		QFETCH(QJsonObject, next);
		QVERIFY(loadSettled());
		answer(chat({{u"enabled"_s, true}, {u"granted"_s, true}}));
		QVERIFY(isPolling());
		answer(chat(next));
		QVERIFY(!isPolling());
	}

	void anErrorIsShownAloneButPollingFollowsTheSettings()
	{
		QVERIFY(loadSettled());
		answer(chat({{u"enabled"_s, true}, {u"granted"_s, true}, {u"error"_s, u"<limit>"_s}}));
		QCOMPARE(state()->text(), u"&lt;limit&gt;"_s);
		QVERIFY(isPolling());
	}

	void otherEventsChangeNothing()
	{
		QVERIFY(loadSettled());
		const QString before = state()->text();
		answer({{u"event"_s, u"Chat"_s}, {u"enabled"_s, true}, {u"granted"_s, true}, {u"command"_s, u"!x"_s}});
		answer({{u"enabled"_s, true}, {u"granted"_s, true}});
		QCOMPARE(state()->text(), before);
		QCOMPARE(command()->text(), u"!rune"_s);
		QVERIFY(!isPolling());
	}

	void savesWhatIsInTheWidgets()
	{
		QVERIFY(load());
		helper().on(u"--chat-set"_s,
			    HelperScript()
				    .await(u"saved"_s)
				    .event(chat({{u"command"_s, u"!stored"_s}, {u"enabled"_s, false}})));
		enabled()->setChecked(true);
		command()->setText(u"  !clip "_s);
		cooldown()->setValue(60);
		cap()->setValue(0);
		QTest::mouseClick(button(u"Save chat settings"_s), Qt::LeftButton);
		QCOMPARE(state()->text(), u"Saving…"_s);
		QTRY_COMPARE(helper().runs(u"--chat-set"_s),
			     QList<QStringList>({{u"--chat-set"_s, u"{\"command\":\"!clip\",\"cooldown_s\":60,"
								   u"\"enabled\":true,\"per_stream_cap\":0}"_s}}));
		helper().open(u"saved"_s);
		QTRY_COMPARE(state()->text(), u"Off."_s);
		QCOMPARE(command()->text(), u"!stored"_s);
		QVERIFY(!enabled()->isChecked());
	}

	void aSaveWithoutAnAnswerStaysSaving()
	{
		QVERIFY(load());
		helper().on(u"--chat-set"_s, HelperScript().exit(3));
		invoke("saveChat");
		TRY_STATUS(u"The Kestrune helper stopped unexpectedly (code 3). "
			   u"Details: %APPDATA%\\Kestrune\\logs\\helper.log"_s,
			   errorColour);
		QCOMPARE(state()->text(), u"Saving…"_s);
	}

	void anAnswerThatIsOnDoesNotPollWithoutAnAccount()
	{
		QVERIFY(load());
		helper().on(u"--chat-set"_s, HelperScript().event(chat({{u"enabled"_s, true}, {u"granted"_s, true}})));
		invoke("saveChat");
		QTRY_COMPARE(state()->text(), u"On: mods can type <b></b> (0 used this stream)."_s);
		QVERIFY(!isPolling());
	}

	void takesLongAndOddTexts()
	{
		QVERIFY(loadSettled());
		const QString longText = QString(1 << 20, u'x') + u'\u0001';
		answer(chat({{u"enabled"_s, true}, {u"granted"_s, true}, {u"command"_s, longText}}));
		QCOMPARE(state()->text(),
			 u"On: mods can type <b>%1</b> (0 used this stream)."_s.arg(shownText(longText)));
	}
};

KESTRUNE_TEST(ChatSectionTest)
#include "chat_section.moc"
