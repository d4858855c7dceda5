#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"

#include <obs.hpp>

/// Where the hotkey's bindings are stored, and which source wins.
class ClipHotkeyTest : public DockTest {
	Q_OBJECT

	static obs_hotkey_id clipHotkey() { return findHotkey("kestrune.clip_that")->id; }
	static QStringList bindings() { return boundCombinations(clipHotkey()); }
	QString shown() const { return child<QLabel>(u"hotkeyLabel"_s)->text(); }

	static void loadFromObs(const char *json)
	{
		const OBSDataAutoRelease saveData = obs_data_create_from_json(json);
		frontend().saveOrLoad(saveData, false);
	}

	static QJsonObject savedByObs()
	{
		const OBSDataAutoRelease saveData = obs_data_create_from_json(R"({"other": 1})");
		frontend().saveOrLoad(saveData, true);
		return QJsonDocument::fromJson(obs_data_get_json(saveData)).object();
	}

private Q_SLOTS:
	void savesAllBindingsWithObsOwnData()
	{
		QVERIFY(load());
		bindHotkey(clipHotkey(), {{INTERACT_ALT_KEY, OBS_KEY_F9}, {0, OBS_KEY_K}});
		const QJsonObject saved = savedByObs();
		QCOMPARE(saved[u"other"].toInt(), 1);
		const QJsonArray records = saved[u"kestrune_hotkey"].toArray();
		QCOMPARE(records.size(), 2);
		QCOMPARE(records[0][u"key"].toString(), u"OBS_KEY_F9"_s);
		QCOMPARE(records[0][u"alt"].toBool(), true);
		QCOMPARE(records[1][u"key"].toString(), u"OBS_KEY_K"_s);
	}

	void savesAnUnboundHotkeyAsAnEmptyList()
	{
		QVERIFY(load());
		const QJsonObject saved = savedByObs();
		QVERIFY(saved[u"kestrune_hotkey"].isArray());
		QVERIFY(saved[u"kestrune_hotkey"].toArray().isEmpty());
	}

	void loadsWhatObsSaved()
	{
		QVERIFY(load());
		loadFromObs(R"({"kestrune_hotkey": [{"control": true, "key": "OBS_KEY_K"}, {"key": "OBS_KEY_F9"}]})");
		QCOMPARE(bindings(), QStringList({u"4 OBS_KEY_K"_s, u"0 OBS_KEY_F9"_s}));
		QCOMPARE(shown(), u"Hotkey: not set"_s);
		QCoreApplication::sendPostedEvents();
		QCOMPARE(shown(), u"Hotkey: Ctrl+K, F9"_s);
		QVERIFY(button(u"Use Ctrl+Shift+C"_s)->isHidden());
	}

	void theFileIsTheFallbackAtOnce()
	{
		writePreferences(R"({"hotkey": [{"shift": true, "control": true, "key": "OBS_KEY_K"}]})");
		QVERIFY(load());
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_K"_s});
		QCOMPARE(shown(), u"Hotkey: Ctrl+Shift+K"_s);
	}

	void theFilesBackupIsReadToo()
	{
		writePreferences("{");
		writePreferences(R"({"hotkey": [{"key": "OBS_KEY_F8"}]})", u"settings.json.bak"_s);
		QVERIFY(load());
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F8"_s});
	}

	void theFallbackStaysWhenObsHasNothing_data()
	{
		QTest::addColumn<QByteArray>("saveData");
		QTest::newRow("no member") << QByteArray("{}");
		QTest::newRow("empty list") << QByteArray(R"({"kestrune_hotkey": []})");
		QTest::newRow("not a list") << QByteArray(R"({"kestrune_hotkey": "OBS_KEY_C"})");
	}
	void theFallbackStaysWhenObsHasNothing()
	{
		QFETCH(QByteArray, saveData);
		writePreferences(R"({"hotkey": [{"alt": true, "key": "OBS_KEY_F7"}]})");
		QVERIFY(load());
		loadFromObs(saveData.constData());
		QCOMPARE(bindings(), QStringList{u"8 OBS_KEY_F7"_s});
	}

	void aFileThatCameLaterIsReadWhenObsLoadsNothing()
	{
		QVERIFY(load());
		writePreferences(R"({"hotkey": [{"alt": true, "key": "OBS_KEY_F7"}]})");
		loadFromObs("{}");
		QCOMPARE(bindings(), QStringList{u"8 OBS_KEY_F7"_s});
		QTRY_COMPARE(shown(), u"Hotkey: Alt+F7"_s);
	}

	void obsOwnDataWins()
	{
		writePreferences(R"({"hotkey": [{"key": "OBS_KEY_F7"}]})");
		QVERIFY(load());
		loadFromObs(R"({"kestrune_hotkey": [{"key": "OBS_KEY_F10"}]})");
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F10"_s});
		QTRY_COMPARE(shown(), u"Hotkey: F10"_s);
	}

	void aBindingMadeInObsIsNotOverridden()
	{
		QVERIFY(load());
		bindHotkey(clipHotkey(), {{0, OBS_KEY_F2}});
		writePreferences(R"({"hotkey": [{"key": "OBS_KEY_F7"}]})");
		loadFromObs("{}");
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F2"_s});
		loadFromObs(R"({"kestrune_hotkey": []})");
		QCOMPARE(bindings(), QStringList{u"0 OBS_KEY_F2"_s});
	}

	void anUnusableFileLeavesItUnbound_data()
	{
		QTest::addColumn<QByteArray>("text");
		QTest::newRow("broken") << QByteArray("{");
		QTest::newRow("no hotkey") << QByteArray("{}");
		QTest::newRow("empty list") << QByteArray(R"({"hotkey": []})");
		QTest::newRow("not a list") << QByteArray(R"({"hotkey": true})");
	}
	void anUnusableFileLeavesItUnbound()
	{
		QFETCH(QByteArray, text);
		writePreferences(text);
		QVERIFY(load());
		QCOMPARE(bindings(), QStringList());
		QCOMPARE(shown(), u"Hotkey: not set"_s);
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
	}

	void theDefaultIsBoundStoredAndReported()
	{
		QVERIFY(load());
		QTest::mouseClick(button(u"Use Ctrl+Shift+C"_s), Qt::LeftButton);
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});
		const QJsonObject expected{{u"hotkey"_s, QJsonArray{QJsonObject{{u"shift"_s, true},
										{u"control"_s, true},
										{u"alt"_s, false},
										{u"command"_s, false},
										{u"key"_s, u"OBS_KEY_C"_s}}}},
					   {u"hotkey_offered"_s, true}};
		QCOMPARE(preferences(), expected);
		QVERIFY(statusIs(u"Hotkey set: Ctrl+Shift+C (also in Settings → Hotkeys)."_s, informationColour));
		QCOMPARE(shown(), u"Hotkey: Ctrl+Shift+C"_s);
		QVERIFY(button(u"Change"_s));
		QVERIFY(button(u"Use Ctrl+Shift+C"_s)->isHidden());
	}

	void storingKeepsTheOtherKeys()
	{
		writePreferences(R"({"seconds": 30, "later": [1], "hotkey": []})");
		QVERIFY(load());
		QTest::mouseClick(button(u"Use Ctrl+Shift+C"_s), Qt::LeftButton);
		QCOMPARE(preferences().size(), 4);
		QCOMPARE(preferences()[u"seconds"].toInt(), 30);
		QCOMPARE(preferences()[u"later"], QJsonValue(QJsonArray{1}));
		QCOMPARE(preferences()[u"hotkey"].toArray().size(), 1);
	}

	void aStoredBindingComesBackAtTheNextStart()
	{
		QVERIFY(load());
		QTest::mouseClick(button(u"Use Ctrl+Shift+C"_s), Qt::LeftButton);
		const QByteArray saved = QJsonDocument(preferences()).toJson();
		cleanup();
		init();
		writePreferences(saved);
		QVERIFY(load());
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});
	}

	void aFileThatCannotBeWrittenStillBinds()
	{
		QVERIFY(load());
		QFile inTheWay(obs().configFolder());
		QVERIFY(inTheWay.open(QIODevice::WriteOnly));
		QTest::mouseClick(button(u"Use Ctrl+Shift+C"_s), Qt::LeftButton);
		QCOMPARE(bindings(), QStringList{u"6 OBS_KEY_C"_s});
		QVERIFY(statusIs(u"Hotkey set: Ctrl+Shift+C (also in Settings → Hotkeys)."_s, informationColour));
	}
};

KESTRUNE_TEST(ClipHotkeyTest)
#include "clip_hotkey.moc"
