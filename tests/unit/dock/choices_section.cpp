#include <QComboBox>
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QImage>
#include <QJsonArray>
#include <QLabel>
#include <QPixmap>
#include <QTimer>

#include "host/dock_test.hpp"

class ChoicesSectionTest : public DockTest {
	Q_OBJECT

	QComboBox *box(const char *name) const { return child<QComboBox>(QString::fromLatin1(name)); }
	QLabel *preview() const { return child<QLabel>(u"preview"_s); }

	QString imageFile(const QSize &size, const QString &name = u"preview.png"_s) const
	{
		QImage image(size, QImage::Format_RGB32);
		image.fill(Qt::cyan);
		image.save(scratchPath(name));
		return scratchPath(name);
	}

	void answerPreview(const QJsonObject &answer) { helper().on(u"--preview"_s, HelperScript().event(answer)); }

	QTimer *previewTimer() const
	{
		for (QTimer *timer : dock()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly)) {
			if (timer->isSingleShot()) {
				return timer;
			}
		}
		return nullptr;
	}

	/// Has the helper offer these fonts.
	void offerFonts(const QJsonArray &fonts)
	{
		QJsonObject answer = linkedStatus();
		answer[u"fonts"] = fonts;
		helper().on(u"--status"_s, HelperScript().event(answer));
		frontend().replayBufferActive = true;
		invoke("refreshStatus");
		TRY_STATUS(pressText, informationColour);
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		QVERIFY(load());
	}

	void styleNoneSwitchesThePositionOff()
	{
		choose(u"style"_s, u"none"_s);
		QVERIFY(!box("pos")->isEnabled());
		QCOMPARE(box("pos")->toolTip(), u"No captions with style None"_s);
		QVERIFY(box("font")->isEnabled());

		choose(u"style"_s, u"clean"_s);
		QVERIFY(box("pos")->isEnabled());
		QCOMPARE(box("pos")->toolTip(), u"Where captions sit on the Short"_s);
	}

	void aStoredStyleNoneSwitchesThePositionOffAtOnce()
	{
		cleanup();
		DockTest::init();
		writePreferences(R"({"style": "none"})");
		QVERIFY(load());
		QVERIFY(!box("pos")->isEnabled());
		QCOMPARE(box("pos")->toolTip(), u"No captions with style None"_s);
	}

	void aMissingNoneIsAddedOnceAtTheEnd()
	{
		box("style")->removeItem(4);
		invoke("decorateChoices");
		invoke("decorateChoices");
		QCOMPARE(box("style")->count(), 5);
		QCOMPARE(box("style")->itemText(4), u"None"_s);
		QCOMPARE(box("style")->itemData(4).toString(), u"none"_s);
	}

	void aNoneInAnotherCaseDoesNotCount()
	{
		box("style")->removeItem(4);
		box("style")->addItem(u"None"_s, u"None"_s);
		box("style")->setCurrentIndex(4);
		invoke("decorateChoices");
		QCOMPARE(box("style")->count(), 6);
		QVERIFY(box("pos")->isEnabled());
	}

	void installedFontsShowTheirOwnFace()
	{
		const QString family = u"DejaVu Sans Mono"_s;
		if (!QFontDatabase::families().contains(family)) {
			QSKIP("DejaVu Sans Mono is not installed");
		}
		offerFonts({u"dejavu sans mono"_s, u"No Such Font"_s});

		const QVariant face = box("font")->itemData(0, Qt::FontRole);
		QCOMPARE(face.value<QFont>().family().toLower(), family.toLower());
		QCOMPARE(face.value<QFont>().pointSizeF(), box("font")->font().pointSizeF() + 1.0);
		QVERIFY(!box("font")->itemData(1, Qt::FontRole).isValid());
	}

	void aPreviewAsksForTheChoices()
	{
		choose(u"layout"_s, u"podcast"_s);
		choose(u"style"_s, u"none"_s);
		choose(u"font"_s, u"inter"_s);
		choose(u"pos"_s, u"top"_s);
		invoke("refreshPreview");
		QTRY_VERIFY(helper().count(u"--preview"_s) > 0);
		QCOMPARE(helper().runs(u"--preview"_s).front(),
			 QStringList({u"--preview"_s, u"--layout"_s, u"podcast"_s, u"--style"_s, u"none"_s, u"--font"_s,
				      u"inter"_s, u"--caption-position"_s, u"top"_s}));
	}

	void anEmptyBoxAsksWithAnEmptyKey()
	{
		box("layout")->clear();
		invoke("refreshPreview");
		QTRY_VERIFY(helper().count(u"--preview"_s) > 0);
		QCOMPARE(helper().runs(u"--preview"_s).front().mid(1, 2), QStringList({u"--layout"_s, QString()}));
	}

	void thePreviewFitsItsPlace_data()
	{
		QTest::addColumn<QSize>("image");
		QTest::addColumn<QSize>("shown");
		QTest::newRow("upright") << QSize(1080, 1920) << QSize(159, 284);
		QTest::newRow("wide") << QSize(1920, 1080) << QSize(160, 90);
		QTest::newRow("small ones grow") << QSize(16, 16) << QSize(160, 160);
	}
	void thePreviewFitsItsPlace()
	{
		QFETCH(QSize, image);
		QFETCH(QSize, shown);
		answerPreview({{u"event"_s, u"preview"_s}, {u"path"_s, imageFile(image)}});
		invoke("refreshPreview");
		QTRY_VERIFY(!preview()->isHidden());
		QCOMPARE(preview()->pixmap().size(), shown);
		QCOMPARE(preview()->pixmap().toImage().pixelColor(3, 3), QColor(Qt::cyan));
	}

	void anUnusableAnswerHidesThePreview_data()
	{
		QTest::addColumn<QJsonValue>("path");
		QTest::newRow("no such file") << QJsonValue(u"/nowhere.png"_s);
		QTest::newRow("no path") << QJsonValue(QJsonValue::Undefined);
		QTest::newRow("not a string") << QJsonValue(5);
		QTest::newRow("not an image") << QJsonValue(QString::fromUtf8(__FILE__));
	}
	void anUnusableAnswerHidesThePreview()
	{
		QFETCH(QJsonValue, path);
		answerPreview({{u"event"_s, u"preview"_s}, {u"path"_s, imageFile({90, 160})}});
		invoke("refreshPreview");
		QTRY_VERIFY(!preview()->isHidden());

		QJsonObject answer{{u"event"_s, u"preview"_s}};
		if (!path.isUndefined()) {
			answer[u"path"] = path;
		}
		answerPreview(answer);
		invoke("refreshPreview");
		QTRY_VERIFY(preview()->isHidden());
		QCOMPARE(preview()->pixmap().size(), QSize(159, 284));
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
	}

	void otherEventsLeaveThePreview()
	{
		const QString path = imageFile({90, 160});
		helper().on(u"--preview"_s, HelperScript()
						    .event({{u"event"_s, u"Preview"_s}, {u"path"_s, path}})
						    .event({{u"event"_s, u"error"_s}, {u"error"_s, u"no"_s}})
						    .event({{u"path"_s, path}})
						    .event({{u"event"_s, u"preview"_s}, {u"path"_s, path}})
						    .await(u"hidden"_s)
						    .event({{u"event"_s, u"error"_s}})
						    .event({{u"event"_s, u"recent"_s}}));
		invoke("refreshPreview");
		QTRY_VERIFY(!preview()->isHidden());
		helper().open(u"hidden"_s);
		QTest::qWait(150);
		QVERIFY(!preview()->isHidden());
	}

	void theLaterOfTwoAnswersWins()
	{
		helper().on(u"--preview"_s, HelperScript()
						    .await(u"first"_s)
						    .event({{u"event"_s, u"preview"_s},
							    {u"path"_s, imageFile({90, 160}, u"a.png"_s)}}));
		invoke("refreshPreview");
		QTRY_COMPARE(helper().count(u"--preview"_s), 1);
		answerPreview({{u"event"_s, u"preview"_s}, {u"path"_s, imageFile({160, 90}, u"b.png"_s)}});
		invoke("refreshPreview");
		QTRY_COMPARE(preview()->pixmap().size(), QSize(160, 90));
		helper().open(u"first"_s);
		QTRY_COMPARE(preview()->pixmap().size(), QSize(159, 284));
	}

	void aMissingHelperGoesUnmentioned()
	{
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("refreshPreview");
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
		QVERIFY(preview()->isHidden());
	}

	void everyLookChoiceRestartsThePreviewTimer_data()
	{
		QTest::addColumn<QString>("box");
		QTest::newRow("layout") << u"layout"_s;
		QTest::newRow("style") << u"style"_s;
		QTest::newRow("font") << u"font"_s;
		QTest::newRow("position") << u"pos"_s;
	}
	void everyLookChoiceRestartsThePreviewTimer()
	{
		QFETCH(QString, box);
		QCOMPARE(previewTimer()->interval(), 2500);
		auto *comboBox = child<QComboBox>(box);
		choose(box, comboBox->itemData(1));
		QCOMPARE(previewTimer()->interval(), 400);
		QVERIFY(previewTimer()->isActive());
	}

	void theClipLengthAndCodeLeaveThePreviewTimer()
	{
		choose(u"seconds"_s, 30);
		box("layout")->setCurrentIndex(2);
		QCOMPARE(previewTimer()->interval(), 2500);
	}

	void quickChoicesAskForOnePreview()
	{
		QElapsedTimer sinceLast;
		for (const QString &key : {u"neon"_s, u"clean"_s, u"meme"_s}) {
			QTest::qWait(100);
			choose(u"style"_s, key);
			sinceLast.start();
		}
		QTRY_COMPARE(helper().count(u"--preview"_s), 1);
		QVERIFY2(sinceLast.elapsed() >= 380, qPrintable(QString::number(sinceLast.elapsed())));
		QCOMPARE(helper().runs(u"--preview"_s).front().at(4), u"meme"_s);
		QTest::qWait(500);
		QCOMPARE(helper().count(u"--preview"_s), 1);
	}
};

KESTRUNE_TEST(ChoicesSectionTest)
#include "choices_section.moc"
