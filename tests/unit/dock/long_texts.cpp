#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include "dock/shown_text.hpp"
#include "host/dock_test.hpp"

/// Texts of a megabyte from the helper: cut in widgets, whole in addresses.
class LongTextsTest : public DockTest {
	Q_OBJECT

	const QString longText_{QString(1 << 20, u'w')};

	/// Calls `slot`, which runs `command`, with this answer.
	void answer(const char *slot, const QString &command, const QJsonObject &event)
	{
		helper().on(command, HelperScript().event(event));
		QVERIFY(invoke(slot));
	}

private Q_SLOTS:
	void theStatusLineCutsThem()
	{
		QVERIFY(load());
		answer("connectAccount", u"--link"_s, {{u"event"_s, u"error"_s}, {u"error"_s, longText_}});
		TRY_STATUS(shownText(longText_), errorColour);
	}

	void theAccountCutsThem()
	{
		QVERIFY(load());
		answer("refreshStatus", u"--status"_s,
		       {{u"event"_s, u"status"_s}, {u"linked"_s, true}, {u"login"_s, longText_}});
		QTRY_VERIFY(label(u"Connected as @"_s + shownText(longText_)));
	}

	void theUpdateAndItsSignalCutThem()
	{
		QVERIFY(load());
		QSignalSpy states(dock(), SIGNAL(updateStateChanged(QString, QString)));
		answer("installUpdate", u"--download-update"_s, {{u"event"_s, u"error"_s}, {u"error"_s, longText_}});
		QTRY_COMPARE(states.size(), 2);
		const QString shown = shownText(u"Update failed: "_s + longText_);
		QCOMPARE(states.last().at(1).toString(), shown);
		QCOMPARE(child<QPushButton>(u"updateBtn"_s)->text(), shown);
		QCOMPARE(child<QPushButton>(u"updateBtn"_s)->toolTip(), shown);
		QVERIFY(statusIs(shown, errorColour));
	}

	void theConsentAddressStaysWhole()
	{
		const QString address = u"https://consent.example/"_s + QString(2 * maxShownText, u'w');
		QVERIFY(loadReady());
		answer("saveChat", u"--chat-set"_s,
		       {{u"event"_s, u"chat"_s}, {u"enabled"_s, true}, {u"consent_url"_s, address}});
		QTRY_VERIFY(label(u"One more step: <a href=\"%1\">allow Kestrune to read your Twitch chat</a>. "
				  "It switches on by itself afterwards."_s.arg(address)));
	}
};

KESTRUNE_TEST(LongTextsTest)
#include "long_texts.moc"
