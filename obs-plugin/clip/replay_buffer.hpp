#pragma once

#include <QObject>

#include <functional>

class Account;
class StatusLine;

/// Starts OBS's Replay Buffer and tells the user whether it runs.
class ReplayBuffer : public QObject {
public:
	/// `onChanged` is called when the Replay Buffer has started or stopped.
	ReplayBuffer(StatusLine &status, const Account &account, std::function<void()> onChanged);

	static bool isActive();

	/// True if it runs; otherwise enables it in the profile, asks OBS to start it, and answers false. OBS may show
	/// a message box, in which the dock may be destroyed.
	bool ensureReplayBuffer();

	void onStarted();
	void onStopped();

private:
	void reportStart();

	StatusLine &status_;
	const Account &account_;
	std::function<void()> onChanged_{};
};
