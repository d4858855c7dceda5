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

/// The steps of a clip: requested, saved by OBS, made into a Short by the helper.
class ClipFlow : public QObject {
public:
	struct Parts {
		ClipButton &button;
		StatusLine &status;
		Account &account;
		ReplayBuffer &replayBuffer;
		const ChoicesSection &choices;
		RecentSection &recent;
	};

	/// `refreshStatus` asks the helper for its status.
	ClipFlow(HelperRunner &helper, const Parts &parts, std::function<void()> refreshStatus);

	/// Updates the clip button to whether a clip is possible now.
	void updateClipButton();
	/// Asks OBS to save a replay; or, if needed first, links an account or starts the Replay Buffer. OBS may show a
	/// message box, in which the dock may be destroyed.
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
	/// A save was requested; its replay-saved event is still to come.
	bool clipPending_{false};
	/// The save watchdog is armed. It reports only the newest save, counted by saveGeneration_.
	bool awaitingSave_{false};
	quint64 saveGeneration_{0};
	/// Unfinished helper runs that make a Short.
	qint32 jobsRunning_{0};
};
