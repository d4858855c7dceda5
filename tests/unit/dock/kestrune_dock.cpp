#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

#include "host/dock_test.hpp"

/// The dock after construction: every widget, its look and its place.
class KestruneDockTest : public DockTest {
	Q_OBJECT

	QWidget *body(const char *name) const { return child<QWidget>(QString::fromLatin1(name)); }
	template<typename Widget> Widget *in(const char *section) const { return body(section)->findChild<Widget *>(); }
	QVBoxLayout *content() const { return qobject_cast<QVBoxLayout *>(body("dockContent")->layout()); }

	/// The labels of a form's rows; "-" for none.
	static QStringList rowLabels(const QFormLayout *form)
	{
		QStringList labels;
		for (int row = 0; row < form->rowCount(); ++row) {
			const QLayoutItem *item = form->itemAt(row, QFormLayout::LabelRole);
			labels << (item ? qobject_cast<QLabel *>(item->widget())->text() : u"-"_s);
		}
		return labels;
	}

	static QWidget *rowWidget(const QFormLayout *form, int row)
	{
		const QLayoutItem *field = form->itemAt(row, QFormLayout::FieldRole);
		return (field ? field : form->itemAt(row, QFormLayout::SpanningRole))->widget();
	}

	static QFormLayout *formOf(const QWidget *widget) { return qobject_cast<QFormLayout *>(widget->layout()); }

	static QStringList entries(const QComboBox *box)
	{
		QStringList list;
		for (int index = 0; index < box->count(); ++index) {
			list << box->itemData(index).toString() + u"="_s + box->itemText(index);
		}
		return list;
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		QVERIFY(load());
	}

	void mainColumn()
	{
		const auto *column = qobject_cast<QVBoxLayout *>(dock()->layout());
		QVERIFY(column);
		QCOMPARE(column->contentsMargins(), QMargins(4, 4, 4, 4));
		QCOMPARE(column->spacing(), 4);
		QCOMPARE(column->count(), 4);
		QCOMPARE(column->itemAt(0)->widget(), child<QPushButton>(u"clipBtn"_s));
		QCOMPARE(column->itemAt(1)->widget(), status());
		QCOMPARE(column->itemAt(2)->widget(), child<QPushButton>(u"updateBtn"_s));
		QCOMPARE(column->itemAt(3)->widget(), child<QScrollArea>(u"dockScroll"_s));
		QCOMPARE(column->stretch(3), 1);
		QCOMPARE(dock()->minimumHeight(), 200);
	}

	void clipButton()
	{
		const auto *clip = child<QPushButton>(u"clipBtn"_s);
		QCOMPARE(clip->text(), u"Clip that"_s);
		QCOMPARE(clip->minimumHeight(), 38);
		QCOMPARE(clip->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
		QCOMPARE(clip->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
		QCOMPARE(clip->styleSheet(),
			 u"QPushButton{font-size:16px;font-weight:700;color:#05060a;border:0;border-radius:7px;"
			 "background:qlineargradient(x1:0,y1:0,x2:1,y2:0,stop:0 #00f0ff,stop:1 #ff2bd6);}"
			 "QPushButton:disabled{background:#333;color:#888}"_s);
		QVERIFY(!clip->isEnabled());
		QCOMPARE(clip->toolTip(), u"Connect your Kestrune account first (Connect account below)."_s);
	}

	void statusLine()
	{
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
		QVERIFY(status()->wordWrap());
		QCOMPARE(status()->textFormat(), Qt::AutoText);
	}

	void updateButton()
	{
		const auto *update = child<QPushButton>(u"updateBtn"_s);
		QVERIFY(update->isHidden());
		QCOMPARE(update->text(), QString());
		QCOMPARE(update->sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
		QCOMPARE(update->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
		QCOMPARE(update->styleSheet(), u"QPushButton{background:#1d2a14;color:#b8ff6a;border:1px solid #4f7a2a;"
					       "border-radius:6px;padding:4px;text-align:left}"
					       "QPushButton:disabled{color:#b8ff6a}"_s);
	}

	void scrollArea()
	{
		const auto *scroll = child<QScrollArea>(u"dockScroll"_s);
		QVERIFY(scroll->widgetResizable());
		QCOMPARE(scroll->frameShape(), QFrame::NoFrame);
		QCOMPARE(scroll->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
		QCOMPARE(scroll->minimumHeight(), 60);
		QCOMPARE(scroll->widget(), body("dockContent"));
	}

	void contentColumn()
	{
		QVERIFY(content());
		QCOMPARE(content()->contentsMargins(), QMargins());
		QCOMPARE(content()->spacing(), 4);
		QCOMPARE(content()->count(), 11);
		const QStringList names{u"styleSection"_s, u"hotkeySection"_s, u"chatBox"_s, u"recentSection"_s};
		for (int index = 0; index < names.size(); ++index) {
			const QString &name = names.at(index);
			QCOMPARE(content()->itemAt(2 + 2 * index)->widget()->objectName(), name + u"Toggle"_s);
			QCOMPARE(content()->itemAt(3 + 2 * index)->widget()->objectName(), name);
			QCOMPARE(content()->stretch(2 + 2 * index), 0);
			QCOMPARE(content()->stretch(3 + 2 * index), 0);
		}
		QVERIFY(content()->itemAt(10)->spacerItem());
		QCOMPARE(content()->stretch(10), 1);
	}

	void accountRow()
	{
		const auto *row = qobject_cast<QHBoxLayout *>(content()->itemAt(0)->layout());
		QVERIFY(row);
		QCOMPARE(row->spacing(), 4);
		QCOMPARE(row->count(), 2);
		const auto *account = qobject_cast<QLabel *>(row->itemAt(0)->widget());
		QCOMPARE(account->text(), u"Not connected"_s);
		QVERIFY(account->wordWrap());
		QCOMPARE(row->stretch(0), 1);
		QCOMPARE(row->itemAt(1)->widget(), button(u"Connect account"_s));
		QCOMPARE(row->stretch(1), 0);
	}

	void clipLength()
	{
		const auto *form = qobject_cast<QFormLayout *>(content()->itemAt(1)->layout());
		QVERIFY(form);
		QCOMPARE(form->contentsMargins(), QMargins());
		QCOMPARE(form->verticalSpacing(), 3);
		QCOMPARE(rowLabels(form), QStringList{u"Clip length"_s});
		const auto *seconds = child<QComboBox>(u"seconds"_s);
		QCOMPARE(rowWidget(form, 0), seconds);
		QCOMPARE(entries(seconds),
			 QStringList({u"30=Last 30 s"_s, u"60=Last 60 s"_s, u"90=Last 90 s"_s, u"120=Last 120 s"_s}));
		QCOMPARE(seconds->itemData(0).typeId(), QMetaType::Int);
		QCOMPARE(seconds->currentText(), u"Last 60 s"_s);
	}

	void sectionHeaders_data()
	{
		QTest::addColumn<QString>("name");
		QTest::addColumn<QString>("title");
		QTest::newRow("style") << u"styleSection"_s << u"Layout && captions"_s;
		QTest::newRow("hotkey") << u"hotkeySection"_s << u"Hotkey && Stream Deck"_s;
		QTest::newRow("chat") << u"chatBox"_s << u"Twitch chat command (mods + you)"_s;
		QTest::newRow("recent") << u"recentSection"_s << u"Recent clips && output folder"_s;
	}
	void sectionHeaders()
	{
		QFETCH(QString, name);
		QFETCH(QString, title);
		auto *header = child<QToolButton>(name + u"Toggle"_s);
		QCOMPARE(header->text(), title);
		QVERIFY(header->isCheckable());
		QVERIFY(header->autoRaise());
		QCOMPARE(header->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
		QCOMPARE(header->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
		QCOMPARE(header->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);

		const auto *section = child<QWidget>(name);
		QVERIFY(section->isHidden());
		QCOMPARE(header->arrowType(), Qt::RightArrow);
		QVERIFY(!header->isChecked());
		QTest::mouseClick(header, Qt::LeftButton);
		QVERIFY(!section->isHidden());
		QCOMPARE(header->arrowType(), Qt::DownArrow);
		QTest::mouseClick(header, Qt::LeftButton);
		QVERIFY(section->isHidden());
		QCOMPARE(header->arrowType(), Qt::RightArrow);
	}

	void styleSection()
	{
		const QFormLayout *form = formOf(body("styleSection"));
		QVERIFY(form);
		QCOMPARE(form->contentsMargins(), QMargins(6, 0, 0, 2));
		QCOMPARE(form->verticalSpacing(), 3);
		QCOMPARE(rowLabels(form),
			 QStringList({u"Layout"_s, u"Caption style"_s, u"Font"_s, u"Caption position"_s, u"-"_s}));
		const QStringList names{u"layout"_s, u"style"_s, u"font"_s, u"pos"_s, u"preview"_s};
		for (int row = 0; row < names.size(); ++row) {
			QCOMPARE(rowWidget(form, row)->objectName(), names.at(row));
		}
		const auto *preview = child<QLabel>(u"preview"_s);
		QCOMPARE(preview->text(), QString());
		QCOMPARE(preview->alignment(), Qt::AlignCenter);
		QVERIFY(preview->isHidden());
	}

	void choices()
	{
		const auto *layout = child<QComboBox>(u"layout"_s);
		QCOMPARE(entries(layout),
			 QStringList({u"vtuber-bubble=Bubble"_s, u"vtuber=Face panel"_s, u"facecam=Facecam"_s,
				      u"podcast=Podcast"_s, u"gameplay=Gameplay only"_s}));
		QCOMPARE(layout->currentText(), u"Bubble"_s);
		const auto *style = child<QComboBox>(u"style"_s);
		QCOMPARE(entries(style), QStringList({u"rune=Rune"_s, u"neon=Neon"_s, u"clean=Clean"_s,
						      u"meme=Bold Meme"_s, u"none=None"_s}));
		QCOMPARE(style->currentText(), u"Rune"_s);
		const auto *font = child<QComboBox>(u"font"_s);
		QCOMPARE(entries(font), QStringList({u"bebas=Bebas Neue"_s, u"montserrat=Montserrat"_s,
						     u"inter=Inter"_s, u"bangers=Bangers"_s}));
		QCOMPARE(font->currentText(), u"Bebas Neue"_s);
		const auto *position = child<QComboBox>(u"pos"_s);
		QCOMPARE(entries(position),
			 QStringList({u"auto=Auto"_s, u"top=Top"_s, u"middle=Middle"_s, u"bottom=Bottom"_s}));
		QCOMPARE(position->currentText(), u"Auto"_s);
		QVERIFY(position->isEnabled());
		QCOMPARE(position->toolTip(), u"Where captions sit on the Short"_s);
	}

	void hotkeySection()
	{
		const auto *column = qobject_cast<QVBoxLayout *>(body("hotkeySection")->layout());
		QVERIFY(column);
		QCOMPARE(column->contentsMargins(), QMargins(6, 0, 0, 2));
		QCOMPARE(column->spacing(), 3);
		QCOMPARE(column->count(), 2);
		const auto *row = qobject_cast<QHBoxLayout *>(column->itemAt(0)->layout());
		QCOMPARE(row->count(), 3);
		QCOMPARE(row->itemAt(0)->widget(), child<QLabel>(u"hotkeyLabel"_s));
		QCOMPARE(row->itemAt(1)->widget(), button(u"Use Ctrl+Shift+C"_s));
		QCOMPARE(row->itemAt(2)->widget(), button(u"Set hotkey"_s));
		QCOMPARE(row->stretch(0), 1);
		QCOMPARE(row->stretch(1), 0);
		QCOMPARE(row->stretch(2), 0);

		const auto *hint = qobject_cast<QLabel *>(column->itemAt(1)->widget());
		QCOMPARE(hint->objectName(), u"streamDeck"_s);
		QVERIFY(hint->wordWrap());
		QCOMPARE(hint->styleSheet(), informationColour);
		QCOMPARE(hint->text(),
			 u"Stream Deck / Touch Portal / Streamer.bot: send the obs-websocket vendor request "
			 "<b>Kestrune</b> → <b>ClipThat</b>."_s);
	}

	void chatSection()
	{
		const QFormLayout *form = formOf(body("chatBox"));
		QVERIFY(form);
		QCOMPARE(form->contentsMargins(), QMargins(6, 0, 0, 2));
		QCOMPARE(form->verticalSpacing(), 3);
		QCOMPARE(rowLabels(form),
			 QStringList({u"-"_s, u"Command"_s, u"Cooldown"_s, u"Max per stream"_s, u"-"_s, u"-"_s}));

		QCOMPARE(qobject_cast<QCheckBox *>(rowWidget(form, 0))->text(), u"Enabled"_s);
		const auto *command = qobject_cast<QLineEdit *>(rowWidget(form, 1));
		QCOMPARE(command->text(), u"!rune"_s);
		QCOMPARE(command->toolTip(), u"Don't use !clip: Twitch, Nightbot and StreamElements already use it."_s);
		const auto *cooldown = qobject_cast<QSpinBox *>(rowWidget(form, 2));
		QCOMPARE(cooldown->minimum(), 10);
		QCOMPARE(cooldown->maximum(), 3600);
		QCOMPARE(cooldown->text(), u"30 s"_s);
		auto *cap = qobject_cast<QSpinBox *>(rowWidget(form, 3));
		QCOMPARE(cap->minimum(), 0);
		QCOMPARE(cap->maximum(), 100);
		QCOMPARE(cap->value(), 10);
		cap->setValue(0);
		QCOMPARE(cap->text(), u"No cap"_s);
		QCOMPARE(qobject_cast<QPushButton *>(rowWidget(form, 4))->text(), u"Save chat settings"_s);
		const auto *state = qobject_cast<QLabel *>(rowWidget(form, 5));
		QCOMPARE(state->text(), u"Off. Connect your Twitch-linked account to use it."_s);
		QVERIFY(state->wordWrap());
		QVERIFY(state->openExternalLinks());
		QCOMPARE(state->textFormat(), Qt::RichText);
	}

	void recentSection()
	{
		const auto *column = qobject_cast<QVBoxLayout *>(body("recentSection")->layout());
		QVERIFY(column);
		QCOMPARE(column->contentsMargins(), QMargins(6, 0, 0, 2));
		QCOMPARE(column->spacing(), 3);
		QCOMPARE(column->count(), 2);
		const auto *list = qobject_cast<QListWidget *>(column->itemAt(0)->widget());
		QCOMPARE(list->minimumHeight(), 60);
		QCOMPARE(list->maximumHeight(), 120);
		QCOMPARE(list->count(), 0);
		QCOMPARE(column->itemAt(1)->widget(), button(u"Open output folder"_s));
	}

	void tabOrderFollowsTheEye()
	{
		QList<QWidget *> expected{child<QPushButton>(u"clipBtn"_s), child<QPushButton>(u"updateBtn"_s),
					  button(u"Connect account"_s)};
		for (const char *name :
		     {"seconds", "styleSectionToggle", "layout", "style", "font", "pos", "hotkeySectionToggle"}) {
			expected << body(name);
		}
		expected << button(u"Use Ctrl+Shift+C"_s) << button(u"Set hotkey"_s) << body("chatBoxToggle")
			 << in<QCheckBox>("chatBox") << in<QLineEdit>("chatBox");
		expected << body("chatBox")->findChildren<QSpinBox *>().at(0)
			 << body("chatBox")->findChildren<QSpinBox *>().at(1);
		expected << button(u"Save chat settings"_s) << body("recentSectionToggle")
			 << in<QListWidget>("recentSection") << button(u"Open output folder"_s);

		QList<QWidget *> order;
		QWidget *widget = expected.first();
		do {
			if (expected.contains(widget)) {
				order << widget;
			}
			widget = widget->nextInFocusChain();
		} while (widget != expected.first());
		QCOMPARE(order, expected);
	}

	void errorsAreRedAndNewsGrey()
	{
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("refreshRecent");
		QCOMPARE(status()->styleSheet(), errorColour);
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_STARTED);
		QVERIFY(statusIs(u"Replay Buffer on. Connect your account to start clipping."_s, informationColour));
	}

	void timers()
	{
		struct Timer {
			int interval_ms;
			bool singleShot;
			bool active;
			bool operator==(const Timer &) const = default;
		};
		QList<Timer> timers;
		for (const QTimer *timer : dock()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly)) {
			timers << Timer{timer->interval(), timer->isSingleShot(), timer->isActive()};
		}

		QCOMPARE(timers.size(), 5);
		QVERIFY(timers.contains(Timer{2500, true, true}));
		QVERIFY(timers.contains(Timer{500, false, false}));
		QVERIFY(timers.contains(Timer{0, false, false}));
		QVERIFY(timers.contains(Timer{2000, false, true}));
		QVERIFY(timers.contains(Timer{21600000, false, true}));
	}
};

KESTRUNE_TEST(KestruneDockTest)
#include "kestrune_dock.moc"
