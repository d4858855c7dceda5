#include <QJsonArray>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "host/dock_test.hpp"

class RecentSectionTest : public DockTest {
	Q_OBJECT

	QListWidget *list() const { return dock()->findChild<QListWidget *>(); }

	void answer(const QJsonObject &members)
	{
		QJsonObject event = members;
		event[u"event"] = u"recent"_s;
		helper().on(u"--recent"_s, HelperScript().event(event));
		invoke("refreshRecent");
	}

	static QJsonObject clip(const QString &name, const QString &path)
	{
		return {{u"name"_s, name}, {u"path"_s, path}};
	}

	QStringList shown() const
	{
		QStringList texts;
		for (int row = 0; row < list()->count(); ++row) {
			texts << list()->item(row)->text();
		}
		return texts;
	}

	void doubleClick(int row) const
	{
		list()->parentWidget()->show();
		const QPoint position = list()->visualItemRect(list()->item(row)).center();
		// With a mouse, a click precedes the double click.
		QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, position);
		QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, position);
	}

	void openFolder() const { QTest::mouseClick(button(u"Open output folder"_s), Qt::LeftButton); }

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		QVERIFY(load());
	}

	void asksWithOneSwitch()
	{
		invoke("refreshRecent");
		QTRY_COMPARE(helper().runs(u"--recent"_s).value(0), QStringList{u"--recent"_s});
	}

	void showsTheClipsInTheHelpersOrder()
	{
		answer({{u"folder"_s, u"D:/Shorts"_s},
			{u"items"_s,
			 QJsonArray{clip(u"a.mp4"_s, u"D:/Shorts/a.mp4"_s), clip(u"b.mp4"_s, u"D:/Shorts/b.mp4"_s)}}});
		QTRY_COMPARE(shown(), QStringList({u"a.mp4"_s, u"b.mp4"_s}));
		QCOMPARE(list()->item(0)->toolTip(), u"D:/Shorts/a.mp4"_s);
		QCOMPARE(list()->item(0)->data(Qt::UserRole).toString(), u"D:/Shorts/a.mp4"_s);
		QCOMPARE(list()->item(1)->toolTip(), u"D:/Shorts/b.mp4"_s);
		const QListWidgetItem plain;
		QCOMPARE(list()->item(0)->flags(), plain.flags());
		openFolder();
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl::fromLocalFile(u"D:/Shorts"_s)});
	}

	void opensAClipAtADoubleClick()
	{
		answer({{u"items"_s, QJsonArray{clip(u"a"_s, u"/s/a.mp4"_s), clip(u"b"_s, u"/s/ä #1.mp4"_s)}}});
		QTRY_COMPARE(shown().size(), 2);
		doubleClick(1);
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl::fromLocalFile(u"/s/ä #1.mp4"_s)});
	}

	void aSingleClickOpensNothing()
	{
		answer({{u"items"_s, QJsonArray{clip(u"a"_s, u"/s/a.mp4"_s)}}});
		QTRY_COMPARE(shown(), QStringList{u"a"_s});
		list()->parentWidget()->show();
		QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
				  list()->visualItemRect(list()->item(0)).center());
		QVERIFY(openedUrls().isEmpty());
	}

	void saysWhenThereAreNone_data()
	{
		QTest::addColumn<QJsonObject>("members");
		QTest::newRow("empty list") << QJsonObject{{u"items"_s, QJsonArray()}};
		QTest::newRow("no list") << QJsonObject();
		QTest::newRow("not a list") << QJsonObject{{u"items"_s, u"a.mp4"_s}};
	}
	void saysWhenThereAreNone()
	{
		QFETCH(QJsonObject, members);
		answer(members);
		QTRY_COMPARE(shown(), QStringList{u"No clips yet"_s});
		const QListWidgetItem *placeholder = list()->item(0);
		QCOMPARE(placeholder->flags(), Qt::NoItemFlags);
		QCOMPARE(placeholder->foreground(), QBrush(QColor(138, 144, 166)));
		QVERIFY(!placeholder->data(Qt::UserRole).isValid());
		doubleClick(0);
		Q_EMIT list()->itemDoubleClicked(list()->item(0));
		QVERIFY(openedUrls().isEmpty());
	}

	void toleratesIncompleteItems()
	{
		answer({{u"items"_s,
			 QJsonArray{QJsonObject{{u"name"_s, u"no path"_s}}, 5,
				    QJsonObject{{u"path"_s, u"/s/no-name.mp4"_s}}, clip(u"a"_s, u"/s/a.mp4"_s)}}});
		QTRY_COMPARE(shown(), QStringList({u"no path"_s, QString(), QString(), u"a"_s}));
		QCOMPARE(list()->item(0)->toolTip(), QString());
		doubleClick(0);
		Q_EMIT list()->itemDoubleClicked(list()->item(1));
		QVERIFY(openedUrls().isEmpty());
		Q_EMIT list()->itemDoubleClicked(list()->item(2));
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl::fromLocalFile(u"/s/no-name.mp4"_s)});
	}

	void everyAnswerReplacesTheLast()
	{
		answer({{u"folder"_s, u"/one"_s}, {u"items"_s, QJsonArray{clip(u"a"_s, u"/a"_s)}}});
		QTRY_COMPARE(shown(), QStringList{u"a"_s});
		answer({{u"folder"_s, u"/two"_s}, {u"items"_s, QJsonArray{clip(u"b"_s, u"/b"_s)}}});
		QTRY_COMPARE(shown(), QStringList{u"b"_s});
		openFolder();
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl::fromLocalFile(u"/two"_s)});
	}

	void anAnswerWithoutFolderForgetsIt()
	{
		answer({{u"folder"_s, u"/one"_s}, {u"items"_s, QJsonArray{clip(u"a"_s, u"/a"_s)}}});
		QTRY_COMPARE(shown(), QStringList{u"a"_s});
		answer({{u"items"_s, QJsonArray{clip(u"b"_s, u"/b"_s)}}});
		QTRY_COMPARE(shown(), QStringList{u"b"_s});
		openFolder();
		QVERIFY(openedUrls().isEmpty());
	}

	void beforeTheFirstAnswerThereIsNoFolder()
	{
		openFolder();
		QVERIFY(openedUrls().isEmpty());
		QCOMPARE(list()->count(), 0);
	}

	void otherEventsAndFailuresKeepTheList()
	{
		answer({{u"folder"_s, u"/one"_s}, {u"items"_s, QJsonArray{clip(u"a"_s, u"/a"_s)}}});
		QTRY_COMPARE(shown(), QStringList{u"a"_s});
		helper().on(u"--recent"_s,
			    HelperScript().event({{u"event"_s, u"Recent"_s}}).event({{u"folder"_s, u"/x"_s}}).exit(1));
		invoke("refreshRecent");
		QTRY_VERIFY(!isRunning(u"--recent"_s));
		QCOMPARE(shown(), QStringList{u"a"_s});

		helper().on(u"--recent"_s, HelperScript().exit(4));
		invoke("refreshRecent");
		QTRY_VERIFY(status()->text().contains(u"(code 4)"));
		QCOMPARE(shown(), QStringList{u"a"_s});
		openFolder();
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl::fromLocalFile(u"/one"_s)});
	}
};

KESTRUNE_TEST(RecentSectionTest)
#include "recent_section.moc"
