#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QJsonObject>
#include <QPushButton>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"

#include <obs.hpp>

/// The preferences file: read at construction, rewritten at every choice.
class PreferencesFileTest : public DockTest {
	Q_OBJECT

	QString current(const char *box) const
	{
		return child<QComboBox>(QString::fromLatin1(box))->currentData().toString();
	}

	QStringList currentChoices() const
	{
		return {current("seconds"), current("layout"), current("style"), current("font"), current("pos")};
	}

	static QStringList defaultChoices() { return {u"60"_s, u"vtuber-bubble"_s, u"rune"_s, u"bebas"_s, u"auto"_s}; }

	QByteArray fileText(const QString &suffix = {}) const
	{
		QFile file(preferencesPath() + suffix);
		return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
	}

private Q_SLOTS:
	void selectsWhatTheFileHolds()
	{
		writePreferences(
			R"({"seconds": 90, "layout": "podcast", "style": "meme", "font": "inter", "caption_position": "bottom"})");
		QVERIFY(load());
		QCOMPARE(child<QComboBox>(u"seconds"_s)->currentText(), u"Last 90 s"_s);
		QCOMPARE(child<QComboBox>(u"layout"_s)->currentText(), u"Podcast"_s);
		QCOMPARE(child<QComboBox>(u"style"_s)->currentText(), u"Bold Meme"_s);
		QCOMPARE(child<QComboBox>(u"font"_s)->currentText(), u"Inter"_s);
		QCOMPARE(child<QComboBox>(u"pos"_s)->currentText(), u"Bottom"_s);
	}

	void selectsBeforeAnybodyCanCall()
	{
		writePreferences(
			R"({"seconds": 90, "layout": "podcast", "style": "none", "caption_position": "bottom"})");
		QVERIFY(load());
		invoke("savePrefs");

		// The font shows that the file was saved.
		const QJsonObject saved{{u"seconds"_s, 90},
					{u"layout"_s, u"podcast"_s},
					{u"style"_s, u"none"_s},
					{u"font"_s, u"bebas"_s},
					{u"caption_position"_s, u"bottom"_s}};
		QCOMPARE(preferences(), saved);
		QVERIFY(!child<QComboBox>(u"pos"_s)->isEnabled());
	}

	void readsTheClipLength_data()
	{
		QTest::addColumn<QByteArray>("seconds");
		QTest::addColumn<int>("selected");
		QTest::newRow("30") << QByteArray("30") << 30;
		QTest::newRow("60") << QByteArray("60") << 60;
		QTest::newRow("120") << QByteArray("120") << 120;
		QTest::newRow("zero") << QByteArray("0") << 60;
		QTest::newRow("not offered") << QByteArray("45") << 60;
		QTest::newRow("negative") << QByteArray("-30") << 60;
		QTest::newRow("low 32 bits: 2^32 + 90") << QByteArray("4294967386") << 90;
		QTest::newRow("low 32 bits: 2^32") << QByteArray("4294967296") << 60;
		QTest::newRow("a string") << QByteArray("\"90\"") << 60;
	}
	void readsTheClipLength()
	{
		QFETCH(QByteArray, seconds);
		QFETCH(int, selected);
		writePreferences("{\"seconds\": " + seconds + "}");
		QVERIFY(load());
		QCOMPARE(child<QComboBox>(u"seconds"_s)->currentData().toInt(), selected);
	}

	void keepsTheDefaultsWithoutUsableContent_data()
	{
		QTest::addColumn<QByteArray>("text");
		QTest::newRow("empty file") << QByteArray();
		QTest::newRow("broken file") << QByteArray("{\"seconds\": 90");
		QTest::newRow("an array") << QByteArray("[1]");
		QTest::newRow("empty object") << QByteArray("{}");
		QTest::newRow("unknown keys")
			<< QByteArray(R"({"layout": "Podcast", "style": "x", "font": "", "caption_position": "left"})");
		QTest::newRow("wrong types") << QByteArray(R"({"layout": 1, "style": true, "font": ["inter"]})");
	}
	void keepsTheDefaultsWithoutUsableContent()
	{
		QFETCH(QByteArray, text);
		writePreferences(text);
		QVERIFY(load());
		QCOMPARE(currentChoices(), defaultChoices());
	}

	void keepsTheDefaultsWithoutAFile()
	{
		QVERIFY(load());
		QCOMPARE(currentChoices(), defaultChoices());
		QVERIFY(!QFile::exists(preferencesPath()));
	}

	void readsTheBackupOfABrokenFile()
	{
		writePreferences("{\"seconds\": 30, \"sty");
		writePreferences(R"({"seconds": 120, "style": "neon"})", u"settings.json.bak"_s);
		QVERIFY(load());
		QCOMPARE(current("seconds"), u"120"_s);
		QCOMPARE(current("style"), u"neon"_s);
	}

	void readsTheBackupOfAMissingFile()
	{
		writePreferences(R"({"seconds": 120})", u"settings.json.bak"_s);
		QVERIFY(load());
		QCOMPARE(current("seconds"), u"120"_s);
	}

	void theFirstChoiceCreatesFolderAndFile()
	{
		QVERIFY(load());
		QVERIFY(!QDir(obs().configFolder()).exists());
		choose(u"style"_s, u"neon"_s);
		QCOMPARE(preferences(), QJsonObject({{u"seconds"_s, 60},
						     {u"layout"_s, u"vtuber-bubble"_s},
						     {u"style"_s, u"neon"_s},
						     {u"font"_s, u"bebas"_s},
						     {u"caption_position"_s, u"auto"_s}}));
		QVERIFY(!QFile::exists(preferencesPath() + u".tmp"_s));
	}

	void everyBoxSavesAllChoices_data()
	{
		QTest::addColumn<QString>("box");
		QTest::addColumn<QVariant>("choice");
		QTest::addColumn<QString>("key");
		QTest::newRow("clip length") << u"seconds"_s << QVariant(30) << u"seconds"_s;
		QTest::newRow("layout") << u"layout"_s << QVariant(u"gameplay"_s) << u"layout"_s;
		QTest::newRow("style") << u"style"_s << QVariant(u"none"_s) << u"style"_s;
		QTest::newRow("font") << u"font"_s << QVariant(u"bangers"_s) << u"font"_s;
		QTest::newRow("position") << u"pos"_s << QVariant(u"top"_s) << u"caption_position"_s;
	}
	void everyBoxSavesAllChoices()
	{
		QFETCH(QString, box);
		QFETCH(QVariant, choice);
		QFETCH(QString, key);
		QVERIFY(load());
		choose(box, choice);
		QCOMPARE(preferences().size(), 5);
		QCOMPARE(preferences()[key].toVariant().toString(), choice.toString());
		QVERIFY(preferences()[u"seconds"_s].isDouble());
	}

	void aKeyPressInABoxSaves()
	{
		QVERIFY(load());
		QTest::keyClick(child<QComboBox>(u"layout"_s), Qt::Key_Down);
		QCOMPARE(preferences()[u"layout"_s].toString(), u"vtuber"_s);
	}

	void selectionsMadeByCodeAreNotSaved()
	{
		QVERIFY(load());
		for (const char *box : {"seconds", "layout", "style", "font", "pos"}) {
			child<QComboBox>(QString::fromLatin1(box))->setCurrentIndex(2);
		}
		QVERIFY(!QFile::exists(preferencesPath()));
	}

	void otherKeysStayInTheFile()
	{
		writePreferences(R"({"hotkey": [{"control": true, "key": "OBS_KEY_K"}], "hotkey_offered": true,)"
				 R"( "from a later version": {"x": [1, 2]}, "seconds": 120})");
		QVERIFY(load());
		const QJsonObject before = preferences();
		choose(u"style"_s, u"clean"_s);
		const QJsonObject after = preferences();
		for (const char *key : {"hotkey", "hotkey_offered", "from a later version"}) {
			QCOMPARE(after[QString::fromLatin1(key)], before[QString::fromLatin1(key)]);
		}
		QCOMPARE(after[u"style"_s].toString(), u"clean"_s);
		QCOMPARE(after[u"seconds"_s].toInt(), 120);
		QCOMPARE(after.size(), 8);
	}

	void otherKeysStayInAFileThatOnlyLibobsReads_data()
	{
		QTest::addColumn<QByteArray>("text");
		const QByteArray members = "{\"hotkey_offered\": true, \"theirs\": \"kept\"";
		QTest::newRow("null bytes after the end") << members + "}\n" + QByteArray(64, '\0');
		QTest::newRow("nested deep")
			<< members + ", \"deep\": " + QByteArray(1500, '[') + QByteArray(1500, ']') + "}";
	}
	void otherKeysStayInAFileThatOnlyLibobsReads()
	{
		QFETCH(QByteArray, text);
		if (const OBSDataAutoRelease readable = obs_data_create_from_json(text.constData()); !readable) {
			QSKIP("not read by this libobs either");
		}
		writePreferences(text);
		QVERIFY(load());
		choose(u"style"_s, u"meme"_s);
		const OBSDataAutoRelease saved = obs_data_create_from_json_file(preferencesPath().toUtf8().constData());
		QVERIFY(saved);
		QCOMPARE(obs_data_get_string(saved, "style"), "meme");
		QCOMPARE(obs_data_get_string(saved, "theirs"), "kept");
		QVERIFY(obs_data_get_bool(saved, "hotkey_offered"));
	}

	void thePreviousFileBecomesTheBackup()
	{
		writePreferences(R"({"seconds": 30})");
		QVERIFY(load());
		const QByteArray before = fileText();
		choose(u"style"_s, u"neon"_s);
		QCOMPARE(fileText(u".bak"_s), before);
		QVERIFY(fileText() != before);
	}

	void savingOverABrokenFileKeepsItsBackupsKeys()
	{
		writePreferences("{\"broken");
		writePreferences(R"({"kept": 1})", u"settings.json.bak"_s);
		QVERIFY(load());
		choose(u"style"_s, u"neon"_s);
		QCOMPARE(preferences()[u"kept"_s].toInt(), 1);
		QCOMPARE(preferences()[u"style"_s].toString(), u"neon"_s);
	}

	void savingOverARuinStartsAnew()
	{
		writePreferences("{\"broken");
		QVERIFY(load());
		choose(u"style"_s, u"neon"_s);
		QCOMPARE(preferences().size(), 5);
	}

	void aFileThatCannotBeWrittenIsNoTrouble()
	{
		QVERIFY(load());
		QFile inTheWay(obs().configFolder());
		QVERIFY(inTheWay.open(QIODevice::WriteOnly));
		choose(u"style"_s, u"neon"_s);
		QCOMPARE(current("style"), u"neon"_s);
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
	}

	void choicesSurviveTheNextStart()
	{
		QVERIFY(load());
		choose(u"seconds"_s, 30);
		choose(u"pos"_s, u"middle"_s);
		QFile file(preferencesPath());
		QVERIFY(file.open(QIODevice::ReadOnly));
		const QByteArray saved = file.readAll();

		cleanup();
		init();
		writePreferences(saved);
		QVERIFY(load());
		QCOMPARE(currentChoices(),
			 QStringList({u"30"_s, u"vtuber-bubble"_s, u"rune"_s, u"bebas"_s, u"middle"_s}));
	}

	void choicesAndHotkeyShareTheFile()
	{
		QVERIFY(load());
		choose(u"style"_s, u"meme"_s);
		QTest::mouseClick(button(u"Use Ctrl+Shift+C"_s), Qt::LeftButton);
		choose(u"font"_s, u"inter"_s);
		QCOMPARE(preferences().size(), 7);
		QCOMPARE(preferences()[u"hotkey_offered"_s].toBool(), true);
		QCOMPARE(preferences()[u"hotkey"_s][0][u"key"_s].toString(), u"OBS_KEY_C"_s);
		QCOMPARE(preferences()[u"style"_s].toString(), u"meme"_s);
		QCOMPARE(preferences()[u"font"_s].toString(), u"inter"_s);
	}
};

KESTRUNE_TEST(PreferencesFileTest)
#include "preferences_file.moc"
