#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"
#include "host/system.hpp"

namespace {
/// Markup that has Qt read a file, work for minutes or take gigabytes. PIPE stands for one that nobody writes to.
void addHostileMarkup()
{
	QTest::addColumn<QString>("text");
	QTest::newRow("picture from a pipe") << u"x <img src=\"PIPE\">"_s;
	QTest::newRow("tables in tables") << u"<table><tr><td>"_s.repeated(20);
	QTest::newRow("wide cell") << u"<table><tr><td colspan=1000000000>x"_s;
	QTest::newRow("style") << u"<p style=\"background-image:url(PIPE)\">x</p>"_s;
}
} // namespace

/// Malicious texts: the dock keeps responding, and OBS's window stays as it is.
class HostileTextsTest : public DockTest {
	Q_OBJECT

	QString withPipe(QString text) const { return text.replace(u"PIPE"_s, newPipe(scratchPath(u"pipe"_s))); }

	/// Has the helper answer `command` with this event when `slot` sends it.
	void answer(const char *slot, const QString &command, const QJsonObject &event)
	{
		helper().on(command, HelperScript().event(event));
		QVERIFY(invoke(slot));
	}
	void showOnTheStatusLine(const QString &text)
	{
		// On a slow machine the dock's own first question ends meanwhile and changes the line.
		helper().on(u"--status"_s, HelperScript().hang());
		QTRY_VERIFY(!isRunning(u"--link"_s)); // the dock starts one at a time
		answer("connectAccount", u"--link"_s, {{u"event"_s, u"error"_s}, {u"error"_s, text}});
		TRY_STATUS(text, errorColour);
	}
	/// Lays the dock out as OBS does when it shows it.
	void layOut() const
	{
		for (QWidget *section : dock()->findChildren<QWidget *>()) {
			if (section->objectName().endsWith(u"Section") || section->objectName() == u"chatBox") {
				section->show();
			}
		}
		dock()->window()->resize(400, 800);
		dock()->window()->grab();
	}
	int minWidth() const { return dock()->minimumSizeHint().width(); }

private Q_SLOTS:
	void markupOnTheStatusLine_data() { addHostileMarkup(); }
	void markupOnTheStatusLine()
	{
		QFETCH(QString, text);
		text = withPipe(text);
		QVERIFY(load());
		showOnTheStatusLine(text);
		layOut();
		QCOMPARE(status()->textFormat(), Qt::PlainText);

		showOnTheStatusLine(u"<b>bold</b>"_s);
		QCOMPARE(status()->textFormat(), Qt::AutoText);
	}

	void markupInTheAccount_data() { addHostileMarkup(); }
	void markupInTheAccount()
	{
		QFETCH(QString, text);
		text = withPipe(text);
		QVERIFY(load());
		answer("refreshStatus", u"--status"_s,
		       {{u"event"_s, u"status"_s}, {u"linked"_s, true}, {u"login"_s, text}});
		QTRY_VERIFY(label(u"Connected as @"_s + text));
		layOut();
		QCOMPARE(label(u"Connected as @"_s + text)->textFormat(), Qt::PlainText);
	}

	void markupInTooltips_data() { addHostileMarkup(); }
	void markupInTooltips()
	{
		QFETCH(QString, text);
		text = withPipe(text);
		QVERIFY(load());
		answer("checkUpdate", u"--check-update"_s,
		       {{u"event"_s, u"update"_s}, {u"update"_s, true}, {u"latest"_s, u"9"_s}, {u"notes"_s, text}});
		const auto *update = child<QPushButton>(u"updateBtn"_s);
		QTRY_VERIFY(!update->isHidden());
		QCOMPARE(update->toolTip(), text.toHtmlEscaped());

		answer("refreshRecent", u"--recent"_s,
		       {{u"event"_s, u"recent"_s},
			{u"items"_s, QJsonArray{QJsonObject{{u"name"_s, text}, {u"path"_s, text}}}}});
		const auto *list = dock()->findChild<QListWidget *>();
		QTRY_COMPARE(list->count(), 1);
		QCOMPARE(list->item(0)->toolTip(), text.toHtmlEscaped());
		QCOMPARE(list->item(0)->text(), text);
	}

	void markupInTheNameOfAHotkey()
	{
		const QString name = withPipe(u"<img src=\"PIPE\">"_s);
		addForeignHotkey("other", qPrintable(name), {controlKey | shiftKey, OBS_KEY_C});
		QVERIFY(load());
		auto *offer = button(u"Use Ctrl+Shift+C (in use!)"_s);
		QVERIFY(offer);
		QCOMPARE(offer->toolTip(), (u"Warning: Ctrl+Shift+C is already used by "_s + name).toHtmlEscaped());
		offer->click();
		layOut();
		QVERIFY(status()->text().contains(name));
		QCOMPARE(status()->textFormat(), Qt::PlainText);
	}

	void aLongWordWidensNothing()
	{
		const QString word(300, u'W');
		QVERIFY(load());
		const int before = minWidth();
		showOnTheStatusLine(word);
		answer("refreshStatus", u"--status"_s,
		       {{u"event"_s, u"status"_s}, {u"linked"_s, true}, {u"login"_s, word}});
		QTRY_VERIFY(label(u"Connected as @"_s + word));
		answer("saveChat", u"--chat-set"_s, {{u"event"_s, u"chat"_s}, {u"error"_s, word}});
		QTRY_VERIFY(label(word));
		layOut();
		QVERIFY2(minWidth() <= before, qPrintable(QString::number(minWidth())));
		QVERIFY(child<QWidget>(u"dockContent"_s)->minimumSizeHint().width() < 400);
	}

	void aLongChoiceWidensNothing()
	{
		QVERIFY(load());
		answer("refreshStatus", u"--status"_s,
		       {{u"event"_s, u"status"_s},
			{u"linked"_s, true},
			{u"layouts"_s, QJsonArray{QString(300, u'W')}}});
		QTRY_VERIFY(label(u"Connected as @"_s));
		layOut();
		QVERIFY(child<QWidget>(u"dockContent"_s)->minimumSizeHint().width() < 400);
	}

	void endlessListsEnd()
	{
		QVERIFY(load());
		QJsonArray choices;
		QJsonArray clips;
		for (int index = 0; index < 20'000; ++index) {
			choices << QString::number(index);
			clips << QJsonObject{{u"name"_s, QString::number(index)}};
		}
		answer("refreshStatus", u"--status"_s,
		       {{u"event"_s, u"status"_s}, {u"linked"_s, true}, {u"layouts"_s, choices}});
		QTRY_COMPARE(child<QComboBox>(u"layout"_s)->count(), 1000);
		answer("refreshRecent", u"--recent"_s, {{u"event"_s, u"recent"_s}, {u"items"_s, clips}});
		QTRY_COMPARE(dock()->findChild<QListWidget *>()->count(), 10'000);
	}

	void manyBindingsWidenNothing()
	{
		QVERIFY(load());
		const QList<obs_key_combination> bindings(200, {controlKey | shiftKey, OBS_KEY_C});
		bindHotkey(findHotkey("kestrune.clip_that")->id, bindings);
		QVERIFY(invoke("refreshHotkeyUi"));
		layOut();
		QVERIFY(child<QLabel>(u"hotkeyLabel"_s)->text().endsWith(u", Ctrl+Shift+C"));
		QVERIFY(child<QWidget>(u"dockContent"_s)->minimumSizeHint().width() < 400);
	}

	void manyLinesLeaveTheButton()
	{
		QVERIFY(load());
		answer("installUpdate", u"--download-update"_s,
		       {{u"event"_s, u"error"_s}, {u"error"_s, u"W\n"_s.repeated(1000)}});
		QTRY_VERIFY(status()->text().startsWith(u"Update failed: W\nW"));
		layOut();
		QVERIFY(child<QPushButton>(u"clipBtn"_s)->height() >= 38);
		QVERIFY(dock()->window()->height() < 1000);
	}
};

KESTRUNE_TEST(HostileTextsTest)
#include "hostile_texts.moc"
