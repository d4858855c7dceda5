#pragma once

#include <QWidget>

#include "helper/helper_runner.hpp"

#include <functional>
#include <memory>

class Account;
class ChatSection;
class ChoicesSection;
class ClipButton;
class ClipFlow;
class HelperStatus;
class HotkeySection;
class Installer;
class QVBoxLayout;
class RecentSection;
class ReplayBuffer;
class StatusLine;
class UpdateButton;
class Updater;

/// The dock. It assembles its parts from top to bottom and is what OBS, timers, remote tools and other threads call:
/// each slot forwards to one part. User-interface thread.
class KestruneDock : public QWidget {
	Q_OBJECT

public:
	/// `handOver` gives the still empty dock to OBS; if it answers false, nothing is built. `helper` replaces the
	/// runner of processes.
	explicit KestruneDock(QWidget *parent, const std::function<bool(QWidget *dock)> &handOver = {},
			      std::unique_ptr<HelperRunner> helper = nullptr);
	~KestruneDock() override;

	void onReplaySaved();
	void onReplayBufferStarted();
	void onReplayBufferStopped();

Q_SIGNALS:
	void updateStateChanged(const QString &state, const QString &text);

	// Called by name: their order is part of the interface.
public Q_SLOTS:
	void clipThat();
	void refreshStatus();
	void refreshRecent();
	void updateClipButton();
	void checkUpdate();
	void installUpdate();
	void startHotkeyCapture();
	void refreshPreview();
	void loadChat();
	void saveChat();
	void pollTriggers();
	void decorateChoices();
	void refreshHotkeyUi();
	void runInstaller(const QString &installerPath);
	void installerFinished(int exitCode);
	void pollInstaller();
	void connectAccount();
	void openFolder();
	void savePrefs();

protected:
	/// Sees the key presses of a hotkey capture.
	bool eventFilter(QObject *watched, QEvent *event) override;

private:
	void buildHeader(QVBoxLayout *mainLayout);
	QVBoxLayout *buildScrollArea(QVBoxLayout *mainLayout);
	void buildParts(QVBoxLayout *content);
	void startWork();

	std::unique_ptr<HelperRunner> helper_;
	ClipButton *clipButton_{nullptr};
	StatusLine *status_{nullptr};
	std::unique_ptr<UpdateButton> updateButton_;
	std::unique_ptr<Account> account_;
	std::unique_ptr<ChoicesSection> choices_;
	std::unique_ptr<HotkeySection> hotkey_;
	std::unique_ptr<ChatSection> chat_;
	std::unique_ptr<RecentSection> recent_;
	std::unique_ptr<Installer> installer_;
	std::unique_ptr<Updater> updater_;
	std::unique_ptr<ReplayBuffer> replayBuffer_;
	std::unique_ptr<ClipFlow> clips_;
	std::unique_ptr<HelperStatus> helperStatus_;
};
