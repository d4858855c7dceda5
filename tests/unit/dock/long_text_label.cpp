#include <QSignalSpy>
#include <QTest>

#include "host/test_program.hpp"
#include "dock/long_text_label.hpp"
#include "dock/shown_text.hpp"

using namespace Qt::StringLiterals;

class LongTextLabelTest : public QObject {
	Q_OBJECT

	static QImage picture(QWidget &widget)
	{
		widget.resize(200, 300);
		return widget.grab().toImage();
	}

private Q_SLOTS:
	void isALabelToThemes() { QCOMPARE(LongTextLabel().metaObject()->className(), "QLabel"); }

	void takesNoClicksOnALongText()
	{
		LongTextLabel label;
		label.setTextFormat(Qt::RichText);
		label.setTextInteractionFlags(Qt::TextBrowserInteraction);
		QSignalSpy links(&label, &QLabel::linkActivated);
		label.resize(300, 300);
		const QString link = u"<a href=\"x\">link</a> "_s;

		label.setText(link.repeated(3));
		QTest::mouseClick(&label, Qt::LeftButton, {}, QPoint(10, label.height() / 2));
		QCOMPARE(links.count(), 1);
		label.setText(link.repeated(60'000));
		QTest::mouseMove(&label, QPoint(20, 20));
		QTest::mouseClick(&label, Qt::LeftButton, {}, QPoint(10, 10));
		QCOMPARE(links.count(), 1);
	}

	void looksLikeALabelWithTheBeginningOfItsText_data()
	{
		QTest::addColumn<QString>("text");
		QTest::addColumn<Qt::TextFormat>("format");
		QTest::newRow("none") << QString() << Qt::AutoText;
		QTest::newRow("short") << u"Ready. Press Clip that."_s << Qt::AutoText;
		QTest::newRow("longest that is whole") << u"word "_s.repeated(longestShownText / 5) << Qt::AutoText;
		QTest::newRow("a megabyte of words") << u"word "_s.repeated(200'000) << Qt::AutoText;
		QTest::newRow("a megabyte of markup") << u"<b>word</b> "_s.repeated(80'000) << Qt::RichText;
	}
	void looksLikeALabelWithTheBeginningOfItsText()
	{
		QFETCH(QString, text);
		QFETCH(Qt::TextFormat, format);
		LongTextLabel label;
		QLabel expected;
		for (QLabel *each : {static_cast<QLabel *>(&label), &expected}) {
			each->setWordWrap(true);
			each->setTextFormat(format);
			each->setStyleSheet(u"color:#ff6b81"_s);
		}
		label.setText(text);
		expected.setText(shownText(text));

		QCOMPARE(label.text(), text);
		QCOMPARE(label.sizeHint(), expected.sizeHint());
		QCOMPARE(label.minimumSizeHint(), expected.minimumSizeHint());
		QCOMPARE(label.heightForWidth(150), expected.heightForWidth(150));
		QCOMPARE(picture(label), picture(expected));
	}
};

KESTRUNE_TEST(LongTextLabelTest)
#include "long_text_label.moc"
