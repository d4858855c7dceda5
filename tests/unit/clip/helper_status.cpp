#include <QComboBox>
#include <QJsonArray>
#include <QLabel>
#include <QPushButton>

#include "host/dock_test.hpp"

namespace {
const QString notConnectedText = u"Not connected. Click Connect account (one click in your browser)."_s;
const QString connectToolTip = u"Connect your Kestrune account first (Connect account below)."_s;
const QString clipToolTip = u"Save the last few seconds and turn them into a vertical Short."_s;
const QString bufferToolTip = u"The Replay Buffer isn't running. Kestrune starts it for you; "
			      "if it stays off, open Settings → OK or restart OBS once."_s;
} // namespace

/// The account state from the helper, and when clips are possible.
class HelperStatusTest : public DockTest {
	Q_OBJECT

	/// Has the helper answer a status query.
	void answer(const QJsonObject &status)
	{
		helper().on(u"--status"_s, HelperScript().event(status));
		invoke("refreshStatus");
	}

	static QJsonObject withMembers(QJsonObject object, const QJsonObject &more)
	{
		for (auto member = more.begin(); member != more.end(); ++member) {
			object[member.key()] = member.value();
		}
		return object;
	}

	void answerLinked(const QJsonObject &more = {})
	{
		answer(withMembers(linkedStatus(), more));
		QTRY_VERIFY(button(u"Connect account"_s)->isHidden());
	}

	QPushButton *clipButton() const { return child<QPushButton>(u"clipBtn"_s); }
	QStringList entries(const char *name) const
	{
		const auto *box = child<QComboBox>(QString::fromLatin1(name));
		QStringList list;
		for (int index = 0; index < box->count(); ++index) {
			list << box->itemData(index).toString() + u'=' + box->itemText(index);
		}
		return list;
	}
	QString current(const char *name) const
	{
		return child<QComboBox>(QString::fromLatin1(name))->currentData().toString();
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		frontend().replayBufferActive = true;
	}

	void asksWithOneSwitch()
	{
		QVERIFY(load());
		invoke("refreshStatus");
		QTRY_COMPARE(helper().runs(u"--status"_s).value(0), QStringList{u"--status"_s});
	}

	void aLinkedAccountIsShownByItsLogin()
	{
		QVERIFY(load());
		answerLinked();
		QVERIFY(label(u"Connected as @ana"_s));
		QVERIFY(statusIs(pressText, informationColour));
		QVERIFY(clipButton()->isEnabled());
		QCOMPARE(clipButton()->text(), u"Clip that"_s);
	}

	void anOfflineAccountIsMarked()
	{
		QVERIFY(load());
		answerLinked({{u"offline"_s, true}});
		QVERIFY(label(u"Connected as @ana (offline)"_s));
		answer(linkedStatus());
		QTRY_VERIFY(label(u"Connected as @ana"_s));
	}

	void anAccountThatIsNotLinkedIsToldApart_data()
	{
		QTest::addColumn<QJsonObject>("answer");
		QTest::addColumn<QString>("account");
		const auto row = [](const char *name, const QJsonObject &more, const QString &account) {
			QTest::newRow(name) << withMembers({{u"event"_s, u"status"_s}}, more) << account;
		};
		row("not linked", {{u"linked"_s, false}}, u"Not connected"_s);
		row("without members", {}, u"Not connected"_s);
		row("linked is not a bool", {{u"linked"_s, 1}, {u"login"_s, u"ana"_s}}, u"Not connected"_s);
		row("revoked", {{u"linked"_s, false}, {u"error"_s, u"revoked"_s}},
		    u"This device was revoked. Connect again."_s);
		row("revoked in another case", {{u"error"_s, u"Revoked"_s}}, u"Not connected"_s);
		row("another error", {{u"error"_s, u"network"_s}}, u"Not connected"_s);
	}
	void anAccountThatIsNotLinkedIsToldApart()
	{
		QFETCH(QJsonObject, answer);
		QFETCH(QString, account);
		QVERIFY(load());
		answerLinked();
		this->answer(answer);
		TRY_STATUS(notConnectedText, informationColour);
		QVERIFY(label(account));
		QVERIFY(!button(u"Connect account"_s)->isHidden());
		QVERIFY(!clipButton()->isEnabled());
		QCOMPARE(clipButton()->toolTip(), connectToolTip);
		QCOMPARE(frontend().startRequests, 0);
	}

	void otherEventsChangeNothing()
	{
		QVERIFY(load());
		helper().on(u"--status"_s, HelperScript()
						   .event({{u"event"_s, u"Status"_s}, {u"linked"_s, true}})
						   .event({{u"linked"_s, true}})
						   .event({{u"event"_s, u"error"_s}, {u"error"_s, u"bad"_s}})
						   .exit(2));
		invoke("refreshStatus");
		QTRY_VERIFY(!isRunning(u"--status"_s));
		QVERIFY(label(u"Not connected"_s));
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
	}

	void aFailedQueryKeepsTheLinkedState()
	{
		QVERIFY(load());
		answerLinked();
		helper().on(u"--status"_s, HelperScript().crash());
		invoke("refreshStatus");
		QTRY_VERIFY(status()->text().startsWith(u"The Kestrune helper stopped unexpectedly"));
		QVERIFY(label(u"Connected as @ana"_s));
		QVERIFY(clipButton()->isEnabled());
	}

	void fillsTheChoicesFromTheHelper()
	{
		QVERIFY(load());
		answerLinked({{u"layouts"_s, QJsonArray{u"podcast"_s, u"cinema"_s, 5}},
			      {u"styles"_s, QJsonArray{u"clean"_s, u"neonx"_s}},
			      {u"fonts"_s, QJsonArray{u"inter"_s, u"Inter"_s}},
			      {u"layout"_s, u"cinema"_s}});
		QCOMPARE(entries("layout"), QStringList({u"podcast=Podcast"_s, u"cinema=cinema"_s, u"="_s}));
		QCOMPARE(entries("style"), QStringList({u"clean=Clean"_s, u"neonx=neonx"_s, u"none=None"_s}));
		QCOMPARE(entries("font"), QStringList({u"inter=Inter"_s, u"Inter=Inter"_s}));
		QCOMPARE(current("layout"), u"cinema"_s);
		QCOMPARE(entries("pos").size(), 4);
	}

	void withoutListsTheChoicesStay_data()
	{
		QTest::addColumn<QJsonObject>("lists");
		QTest::newRow("absent") << QJsonObject{{u"layout"_s, u"podcast"_s}};
		QTest::newRow("empty") << QJsonObject{
			{u"layouts"_s, QJsonArray()}, {u"styles"_s, QJsonArray()}, {u"fonts"_s, QJsonArray()}};
		QTest::newRow("not lists") << QJsonObject{{u"layouts"_s, u"podcast"_s}, {u"styles"_s, 1}};
	}
	void withoutListsTheChoicesStay()
	{
		QFETCH(QJsonObject, lists);
		QVERIFY(load());
		child<QComboBox>(u"layout"_s)->setCurrentIndex(1);
		answerLinked(lists);
		QCOMPARE(entries("layout").size(), 5);
		QCOMPARE(current("layout"), u"vtuber"_s);
		QCOMPARE(entries("style").size(), 5);
		QCOMPARE(entries("font").size(), 4);
	}

	void picksTheEntryToSelect_data()
	{
		QTest::addColumn<QByteArray>("preferences");
		QTest::addColumn<QJsonObject>("offer");
		QTest::addColumn<QString>("selected");
		const QJsonArray styles{u"meme"_s, u"clean"_s, u"neon"_s, u"none"_s};
		const auto row = [](const char *name, const QByteArray &preferences, const QJsonObject &offer,
				    const QString &selected) {
			QTest::newRow(name) << preferences << offer << selected;
		};
		row("the user's own wins", R"({"style": "neon"})", {{u"style"_s, u"clean"_s}, {u"styles"_s, styles}},
		    u"neon"_s);
		row("else the helper's", "{}", {{u"style"_s, u"clean"_s}, {u"styles"_s, styles}}, u"clean"_s);
		row("neither is offered", R"({"style": "rune"})", {{u"style"_s, u"x"_s}, {u"styles"_s, styles}},
		    u"meme"_s);
		row("the user's own is not offered", R"({"style": "x"})",
		    {{u"style"_s, u"clean"_s}, {u"styles"_s, styles}}, u"meme"_s);
		row("an unknown one is found later", R"({"style": "glow"})",
		    {{u"styles"_s, QJsonArray{u"rune"_s, u"glow"_s}}}, u"glow"_s);
		row("the helper has none: stays", "{}", {{u"styles"_s, QJsonArray{u"meme"_s, u"rune"_s}}}, u"rune"_s);
		row("the helper's is of another case", "{}", {{u"style"_s, u"CLEAN"_s}, {u"styles"_s, styles}},
		    u"meme"_s);
		row("preferred none is not offered", R"({"style": "none"})", {{u"styles"_s, QJsonArray{u"neon"_s}}},
		    u"neon"_s);
		row("preferred none is offered", R"({"style": "none"})", {{u"styles"_s, styles}}, u"none"_s);
	}
	void picksTheEntryToSelect()
	{
		QFETCH(QByteArray, preferences);
		QFETCH(QJsonObject, offer);
		QFETCH(QString, selected);
		writePreferences(preferences);
		QVERIFY(load());
		answerLinked(offer);
		QCOMPARE(current("style"), selected);
		QCOMPARE(child<QComboBox>(u"pos"_s)->isEnabled(), selected != u"none");
	}

	void aChoiceMadeNowIsPreferredToo()
	{
		QVERIFY(load());
		choose(u"font"_s, u"bangers"_s);
		answerLinked({{u"font"_s, u"inter"_s}, {u"fonts"_s, QJsonArray{u"inter"_s, u"bangers"_s}}});
		QCOMPARE(current("font"), u"bangers"_s);
	}

	void fillingTheChoicesNeitherSavesNorPreviews()
	{
		QVERIFY(load());
		answerLinked({{u"layout"_s, u"cinema"_s}, {u"layouts"_s, QJsonArray{u"podcast"_s, u"cinema"_s}}});
		QVERIFY(!QFile::exists(preferencesPath()));
		QTest::qWait(600);
		QCOMPARE(helper().count(u"--preview"_s), 0);
	}

	void theToolTipNamesWhatIsMissing()
	{
		frontend().replayBufferActive = false;
		QVERIFY(load());
		QCOMPARE(clipButton()->toolTip(), connectToolTip);
		QVERIFY(!clipButton()->isEnabled());

		frontend().replayBufferActive = true;
		invoke("updateClipButton");
		QCOMPARE(clipButton()->toolTip(), connectToolTip);
		QVERIFY(!clipButton()->isEnabled());

		answerLinked();
		QCOMPARE(clipButton()->toolTip(), clipToolTip);
		QVERIFY(clipButton()->isEnabled());

		frontend().replayBufferActive = false;
		invoke("updateClipButton");
		QCOMPARE(clipButton()->toolTip(), bufferToolTip);
		QVERIFY(!clipButton()->isEnabled());
	}

	void aLinkedAccountSwitchesTheReplayBufferOn()
	{
		frontend().replayBufferActive = false;
		QVERIFY(load());
		answerLinked();
		QCOMPARE(frontend().startRequests, 1);
		QVERIFY(!clipButton()->isEnabled());
		QCOMPARE(clipButton()->toolTip(), bufferToolTip);
	}

	void aStaleReadyIsReplacedByItself()
	{
		QVERIFY(loadReady());
		QVERIFY(statusIs(pressText, informationColour));
		frontend().replayBufferActive = false;
		TRY_STATUS(u"Replay Buffer is off. Starting it…"_s, informationColour);
		QCOMPARE(frontend().startRequests, 0);
	}

	void anyTextThatBeginsWithReadyIsStale()
	{
		QVERIFY(load());
		answerLinked();
		helper().on(u"--link"_s,
			    HelperScript().event({{u"event"_s, u"error"_s}, {u"error"_s, u"Ready or not"_s}}).hang());
		invoke("connectAccount");
		TRY_STATUS(u"Ready or not"_s, errorColour);
		frontend().replayBufferActive = false;
		invoke("updateClipButton");
		QVERIFY(statusIs(u"Replay Buffer is off. Starting it…"_s, informationColour));
	}

	void otherTextsStay()
	{
		QVERIFY(load());
		answerLinked();
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_STOPPED);
		frontend().replayBufferActive = false;
		const QString text = status()->text();
		invoke("updateClipButton");
		QVERIFY(statusIs(text, errorColour));
	}
};

KESTRUNE_TEST(HelperStatusTest)
#include "helper_status.moc"
