#include <QTest>

#include "dock/shown_text.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ShownTextTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void isWholeUpToTheLimit()
	{
		QCOMPARE(shownText(QString()), QString());
		const QString longest(longestShownText, u'w');
		QCOMPARE(shownText(longest), longest);
	}
	void isCutBeyondTheLimit()
	{
		QCOMPARE(shownText(QString(longestShownText + 1, u'w')), QString(longestShownText, u'w') + u'…');
		const QString letters(longestShownText - 1, u'w');
		QCOMPARE(shownText(letters + u"😀 and more"_s), letters + u'…');
		QCOMPARE(shownText(QString(1 << 20, u'w')).size(), longestShownText + 1);
	}
};

KESTRUNE_TEST(ShownTextTest)
#include "shown_text.moc"
