#pragma once

#include <QObject>

#include "dock/clip_choices.hpp"

#include <functional>

class Account;
class ClipButton;
class HelperRunner;
class QJsonObject;
class ReplayBuffer;
class StatusLine;

/// One clip, in the order it happens: asked for, saved by OBS, made into a Short by the helper.
class ClipFlow : public QObject {
public:
	/// What the flow asks of the dock.
	struct Dock {
		std::function<ClipChoices()> choices{};
		std::function<void()> refreshStatus{};
		std::function<void()> refreshRecent{};
	};

	ClipFlow(ClipButton &button, HelperRunner &helper, StatusLine &status, Account &account,
		 ReplayBuffer &replayBuffer, Dock dock);

	/// Shows on the clip button whether a clip can be asked for now.
	void updateClipButton();
	/// Asks OBS for a replay; or links an account, or starts the Replay Buffer, when that has to come first. OBS
	/// may show a message box, and there anything can happen, even the end of the dock.
	void clipThat();
	/// The same for `name`, who typed the chat command.
	void clipFromChat(const QString &name);
	/// OBS has saved a replay, whoever asked for it.
	void onReplaySaved();

private:
	void watchSave();
	void onSaveTimedOut(quint64 generation);
	void makeShort(const QString &replayPath);
	void onProcessEvent(const QJsonObject &event);

	ClipButton &button_;
	HelperRunner &helper_;
	StatusLine &status_;
	Account &account_;
	ReplayBuffer &replayBuffer_;
	Dock dock_{};
	/// A save was asked for and its replay-saved event has not come yet.
	bool clipPending_{false};
	/// The save watchdog is armed; it only speaks for the newest save, counted by saveGeneration_.
	bool awaitingSave_{false};
	quint64 saveGeneration_{0};
	/// Helper runs that make a Short and have not finished.
	qint32 jobsRunning_{0};
};
