#pragma once

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include "host/dock_test.hpp"

#include <memory>

inline const QString normalUpdateStyle =
	u"QPushButton{background:#1d2a14;color:#b8ff6a;border:1px solid #4f7a2a;border-radius:6px;padding:4px;"
	u"text-align:left}QPushButton:disabled{color:#b8ff6a}"_s;
inline const QString errorUpdateStyle =
	u"QPushButton{background:#2a1418;color:#ff8a9a;border:1px solid #7a2a3a;border-radius:6px;padding:4px;"
	u"text-align:left}"_s;

/// Tests updates: the update button, and the states that the dock emits.
class UpdateTest : public DockTest {
	Q_OBJECT

protected:
	/// Loads the module and records its update states.
	bool loadListening()
	{
		if (!load()) {
			return false;
		}
		states_ = std::make_unique<QSignalSpy>(dock(), SIGNAL(updateStateChanged(QString, QString)));
		return states_->isValid();
	}

	/// Loads the module and has the helper offer this version.
	bool loadOffered(const QString &version = u"1.0.7"_s)
	{
		helper().on(u"--check-update"_s, HelperScript().event(offer(version)));
		if (!loadListening() || !invoke("checkUpdate")) {
			return false;
		}
		const bool offered =
			QTest::qWaitFor([this] { return updateButton()->isVisibleTo(dock()); }, patience_ms);
		states_->clear();
		return offered;
	}

	static QJsonObject offer(const QString &version)
	{
		return {{u"event"_s, u"update"_s},
			{u"update"_s, true},
			{u"latest"_s, version},
			{u"notes"_s, u"Fixes captions."_s}};
	}

	QPushButton *updateButton() const { return child<QPushButton>(u"updateBtn"_s); }
	void click() const { QTest::mouseClick(updateButton(), Qt::LeftButton); }

	/// The states since the last call, each as "state: text".
	QStringList takeStates() const
	{
		QStringList taken;
		while (!states_->isEmpty()) {
			const QList<QVariant> state = states_->takeFirst();
			taken << state[0].toString() + u": "_s + state[1].toString();
		}
		return taken;
	}

	/// Whether button and status line show this failure.
	bool showsError(const QString &text) const
	{
		return updateButton()->text() == text && updateButton()->toolTip() == text &&
		       updateButton()->styleSheet() == errorUpdateStyle && updateButton()->isEnabled() &&
		       updateButton()->isVisibleTo(dock()) && statusIs(text, errorColour);
	}
	/// Whether they show this text as a step under way or done.
	bool showsStep(const QString &text) const
	{
		return updateButton()->text() == text && updateButton()->toolTip() == text &&
		       updateButton()->styleSheet() == normalUpdateStyle && !updateButton()->isEnabled() &&
		       updateButton()->isVisibleTo(dock()) && statusIs(text, informationColour);
	}

private:
	std::unique_ptr<QSignalSpy> states_{};
};

/// Waits until button and status line show this failure.
#define TRY_ERROR(expected) QTRY_VERIFY2(showsError(expected), qPrintable(updateButton()->text()))
