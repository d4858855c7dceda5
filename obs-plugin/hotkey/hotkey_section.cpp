#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "dock/dock_section.hpp"
#include "dock/shown_text.hpp"
#include "dock/status_line.hpp"
#include "dock/text_label.hpp"
#include "hotkey/binding_record.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/combination_text.hpp"
#include "hotkey/hotkey_conflicts.hpp"
#include "hotkey/hotkey_section.hpp"
#include "hotkey/hotkey_texts.hpp"
#include "hotkey/key_translation.hpp"

using namespace Qt::StringLiterals;

HotkeySection::HotkeySection(QBoxLayout *content, QObject *dock, StatusLine &status)
	: dock_(dock)
	, status_(status)
{
	QVBoxLayout *column = sectionColumn(addSection(content, u"Hotkey && Stream Deck"_s, u"hotkeySection"_s, dock));

	auto *row = new QHBoxLayout;
	label_ = new TextLabel;
	label_->setObjectName(u"hotkeyLabel"_s);
	row->addWidget(label_, 1);
	defaultButton_ = new QPushButton(u"Use Ctrl+Shift+C"_s);
	row->addWidget(defaultButton_, 0);
	setButton_ = new QPushButton(u"Set hotkey"_s);
	row->addWidget(setButton_, 0);
	column->addLayout(row);

	auto *streamDeckHint =
		new QLabel(u"Stream Deck / Touch Portal / Streamer.bot: send the obs-websocket vendor request "
			   "<b>Kestrune</b> → <b>ClipThat</b>."_s);
	streamDeckHint->setObjectName(u"streamDeck"_s);
	streamDeckHint->setWordWrap(true);
	streamDeckHint->setStyleSheet(u"color:#8a90a6"_s);
	column->addWidget(streamDeckHint);

	connect(setButton_, &QPushButton::clicked, this, &HotkeySection::startHotkeyCapture);
	connect(defaultButton_, &QPushButton::clicked, this, &HotkeySection::applyDefaultHotkey);
}

void HotkeySection::refreshHotkeyUi()
{
	const QString current = currentHotkeyText();
	label_->showText(u"Hotkey: "_s + (current.isEmpty() ? u"not set"_s : shownText(current)));
	if (capturing_) {
		setButton_->setText(u"Press keys… (Esc cancels)"_s);
	} else {
		setButton_->setText(current.isEmpty() ? u"Set hotkey"_s : u"Change"_s);
	}

	const QStringList conflicts = hotkeyConflicts(defaultCombination());
	defaultButton_->setVisible(current.isEmpty() && clipHotkeyId() != OBS_INVALID_HOTKEY_ID);
	defaultButton_->setToolTip(shownToolTip(defaultHotkeyToolTip(conflicts)));
	defaultButton_->setText(defaultHotkeyText(conflicts));
}

void HotkeySection::startHotkeyCapture()
{
	capturing_ = true;
	setButton_->installEventFilter(dock_);
	setButton_->setFocus();
	setButton_->grabKeyboard();
	refreshHotkeyUi();
}

bool HotkeySection::filterEvent(const QObject *watched, QEvent *event)
{
	if (!capturing_ || watched != setButton_) {
		return false;
	}
	if (event->type() == QEvent::ShortcutOverride) {
		// Otherwise Qt would trigger the menu item of OBS that has this shortcut, and no key press would come.
		event->accept();
	}
	if (event->type() != QEvent::KeyPress) {
		return false;
	}

	const auto *keyPress = static_cast<const QKeyEvent *>(event);
	const bool modifierAlone = keyPress->key() >= Qt::Key_Shift && keyPress->key() <= Qt::Key_Alt;
	if (!modifierAlone) {
		endHotkeyCapture();
		bindPressed(*keyPress);
		refreshHotkeyUi();
	}
	return true;
}

void HotkeySection::endHotkeyCapture()
{
	capturing_ = false;
	setButton_->releaseKeyboard();
	setButton_->removeEventFilter(dock_);
}

void HotkeySection::bindPressed(const QKeyEvent &keyPress)
{
	if (keyPress.key() == Qt::Key_Escape) {
		return;
	}

	// A key without modifiers is fine, too: whoever binds a bare F-key knows why.
	const obs_key_combination combination{obsModifiers(keyPress.modifiers()), qtKeyToObsKey(keyPress)};
	if (combination.key == OBS_KEY_NONE) {
		status_.setStatus(u"That key can't be used as a hotkey; try a letter or F-key with Ctrl/Shift/Alt."_s,
				  true);
	} else {
		applyHotkey(combination);
	}
}

bool HotkeySection::applyHotkey(const obs_key_combination &combination)
{
	if (clipHotkeyId() == OBS_INVALID_HOTKEY_ID || combination.key == OBS_KEY_NONE) {
		return false;
	}

	// Another hotkey on the same keys is a warning, not a failure: OBS fires both.
	const QStringList conflicts = hotkeyConflicts(combination);
	const OBSDataArrayAutoRelease bindings = hotkeyComboToData(combination);
	bindClipHotkey(bindings);
	storeHotkeyInSettings(bindings);
	refreshHotkeyUi();
	status_.setStatus(hotkeySetText(hotkeyComboText(combination), conflicts), !conflicts.isEmpty());
	return true;
}

void HotkeySection::applyDefaultHotkey()
{
	applyHotkey(defaultCombination());
}
