#pragma once

#include <QObject>

#include <functional>

class Account;
class ChoicesSection;
class ClipButton;
class HelperRunner;
class QJsonObject;
class RecentSection;
class ReplayBuffer;
class StatusLine;

/// One clip, in the order it happens: asked for, saved by OBS, made into a Short by the helper.
class ClipFlow : public QObject {
public:
	/// What a clip concerns.
	struct Parts {
		ClipButton &button;
		StatusLine &status;
		Account &account;
		ReplayBuffer &replayBuffer;
		const ChoicesSection &choices;
		RecentSection &recent;
	};

	/// `refreshStatus` asks for the helper's status.
	ClipFlow(HelperRunner &helper, const Parts &parts, std::function<void()> refreshStatus);

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

	HelperRunner &helper_;
	Parts parts_;
	std::function<void()> refreshStatus_{};
	/// A save was asked for and its replay-saved event has not come yet.
	bool clipPending_{false};
	/// The save watchdog is armed; it only speaks for the newest save, counted by saveGeneration_.
	bool awaitingSave_{false};
	quint64 saveGeneration_{0};
	/// Helper runs that make a Short and have not finished.
	qint32 jobsRunning_{0};
};
