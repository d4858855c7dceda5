#pragma once

#include <QObject>

#include <functional>

class Account;
class StatusLine;

/// OBS's Replay Buffer, as far as a clip needs it: switched on, and the user told about it.
class ReplayBuffer : public QObject {
public:
	/// `onChanged` is called when OBS has started or stopped the Replay Buffer.
	ReplayBuffer(StatusLine &status, const Account &account, std::function<void()> onChanged);

	/// Whether OBS runs it now.
	static bool isActive();

	/// True when it runs; otherwise sets it up in the profile, asks OBS to start it, and answers false. OBS may
	/// show a message box for that, and there anything can happen, even the end of the dock.
	bool ensureReplayBuffer();

	void onStarted();
	void onStopped();

private:
	void reportStart();

	StatusLine &status_;
	const Account &account_;
	std::function<void()> onChanged_{};
};
