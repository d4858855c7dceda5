#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "dock/dock_section.hpp"
#include "dock/kestrune_dock.hpp"
#include "hotkey/binding_record.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_conflicts.hpp"
#include "hotkey/hotkey_text.hpp"

void KestruneDock::buildHotkeySection(QVBoxLayout *content)
{
	QVBoxLayout *column = sectionColumn(
		addSection(content, QStringLiteral("Hotkey && Stream Deck"), QStringLiteral("hotkeySection"), this));

	auto *row = new QHBoxLayout;
	hotkeyLabel_ = new QLabel;
	hotkeyLabel_->setObjectName(QStringLiteral("hotkeyLabel"));
	row->addWidget(hotkeyLabel_, 1);
	defaultHotkeyButton_ = new QPushButton(QStringLiteral("Use Ctrl+Shift+C"));
	row->addWidget(defaultHotkeyButton_, 0);
	setHotkeyButton_ = new QPushButton(QStringLiteral("Set hotkey"));
	row->addWidget(setHotkeyButton_, 0);
	column->addLayout(row);

	auto *streamDeckHint = new QLabel(
		QStringLiteral("Stream Deck / Touch Portal / Streamer.bot: send the obs-websocket vendor request "
			       "<b>Kestrune</b> → <b>ClipThat</b>."));
	streamDeckHint->setObjectName(QStringLiteral("streamDeck"));
	streamDeckHint->setWordWrap(true);
	streamDeckHint->setStyleSheet(QStringLiteral("color:#8a90a6"));
	column->addWidget(streamDeckHint);

	connect(setHotkeyButton_, &QPushButton::clicked, this, &KestruneDock::startHotkeyCapture);
	connect(defaultHotkeyButton_, &QPushButton::clicked, this, &KestruneDock::applyDefaultHotkey);
}

void KestruneDock::refreshHotkeyUi()
{
	if (!hotkeyLabel_)
		return;

	const QString current = currentHotkeyText();
	hotkeyLabel_->setText(QStringLiteral("Hotkey: ") + (current.isEmpty() ? QStringLiteral("not set") : current));
	if (capturing_)
		setHotkeyButton_->setText(QStringLiteral("Press keys… (Esc cancels)"));
	else
		setHotkeyButton_->setText(current.isEmpty() ? QStringLiteral("Set hotkey") : QStringLiteral("Change"));

	const QStringList conflicts = hotkeyConflicts(defaultCombination());
	defaultHotkeyButton_->setVisible(current.isEmpty() && clipHotkeyId() != OBS_INVALID_HOTKEY_ID);
	defaultHotkeyButton_->setToolTip(defaultHotkeyToolTip(conflicts));
	defaultHotkeyButton_->setText(defaultHotkeyText(conflicts));
}

bool KestruneDock::applyHotkey(const obs_key_combination &combination)
{
	if (clipHotkeyId() == OBS_INVALID_HOTKEY_ID || combination.key == OBS_KEY_NONE)
		return false;

	const QStringList conflicts = hotkeyConflicts(combination);
	{
		const OBSDataArrayAutoRelease bindings = hotkeyComboToData(combination);
		bindClipHotkey(bindings);
		storeHotkeyInSettings(bindings);
	}
	refreshHotkeyUi();
	setStatus(hotkeySetText(hotkeyComboText(combination), conflicts), !conflicts.isEmpty());
	return true;
}

void KestruneDock::applyDefaultHotkey()
{
	applyHotkey(defaultCombination());
}
