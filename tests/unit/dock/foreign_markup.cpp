#include <QImage>
#include <QLabel>
#include <QSignalSpy>

#include "host/dock_test.hpp"

/// Qt reads markup in status texts as in any label: what it can do there and what not.
class ForeignMarkupTest : public DockTest {
	Q_OBJECT

	/// Waits until the dock shows this text of the helper.
	bool showsOnTheStatusLine(const QString &text)
	{
		helper().on(u"--status"_s, HelperScript().hang());
		helper().on(u"--link"_s, HelperScript().event({{u"event"_s, u"error"_s}, {u"error"_s, text}}));
		return load() && invoke("connectAccount") &&
		       QTest::qWaitFor([&] { return statusIs(text, errorColour); }, 10000);
	}

private Q_SLOTS:
	void aLinkOpensNothing()
	{
		QVERIFY(showsOnTheStatusLine(u"<a href=\"https://stranger.example\">click here</a>"_s));
		status()->resize(200, 20);
		const QSignalSpy clicked(status(), &QLabel::linkActivated);
		QTest::mouseClick(status(), Qt::LeftButton, {}, QPoint(10, 10));
		QCOMPARE(clicked.size(), 1);
		QVERIFY(openedUrls().isEmpty());
	}

	void aPictureIsReadFromItsFile()
	{
		const QString path = scratchPath(u"picture.png"_s);
		QVERIFY(QImage(50, 300, QImage::Format_RGB32).save(path));
		QVERIFY(showsOnTheStatusLine(u"<img src=\"%1\">"_s.arg(QUrl::fromLocalFile(path).toString())));
		QVERIFY(status()->sizeHint().height() >= 300);
	}
};

KESTRUNE_TEST(ForeignMarkupTest)
#include "foreign_markup.moc"
