#pragma once

#include <QWidget>

#include "chat/chat_section.hpp"
#include "clip/account.hpp"
#include "clip/clip_flow.hpp"
#include "clip/helper_status.hpp"
#include "clip/replay_buffer.hpp"
#include "dock/call_part.hpp"
#include "dock/choices_section.hpp"
#include "dock/recent_section.hpp"
#include "helper/helper_runner.hpp"
#include "hotkey/hotkey_section.hpp"
#include "update/installer.hpp"
#include "update/update_button.hpp"
#include "update/updater.hpp"

#include <functional>
#include <memory>

class ClipButton;
class QVBoxLayout;
class StatusLine;

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

	void onReplaySaved() { callPart(clips_, &ClipFlow::onReplaySaved); }
	void onReplayBufferStarted() { callPart(replayBuffer_, &ReplayBuffer::onStarted); }
	void onReplayBufferStopped() { callPart(replayBuffer_, &ReplayBuffer::onStopped); }

Q_SIGNALS:
	void updateStateChanged(const QString &state, const QString &text);

	// Callers outside the module find them by name or by index: keep the order, and add new ones at the end.
public Q_SLOTS:
	void clipThat() { callPart(clips_, &ClipFlow::clipThat); }
	void refreshStatus() { callPart(helperStatus_, &HelperStatus::refreshStatus); }
	void refreshRecent() { callPart(recent_, &RecentSection::refreshRecent); }
	void updateClipButton() { callPart(clips_, &ClipFlow::updateClipButton); }
	void checkUpdate() { callPart(updater_, &Updater::checkUpdate); }
	void installUpdate() { callPart(updater_, &Updater::installUpdate); }
	void startHotkeyCapture() { callPart(hotkey_, &HotkeySection::startHotkeyCapture); }
	void refreshPreview() { callPart(choices_, &ChoicesSection::refreshPreview); }
	void loadChat() { callPart(chat_, &ChatSection::loadChat); }
	void saveChat() { callPart(chat_, &ChatSection::saveChat); }
	void pollTriggers() { callPart(chat_, &ChatSection::pollTriggers); }
	void decorateChoices() { callPart(choices_, &ChoicesSection::decorateChoices); }
	void refreshHotkeyUi() { callPart(hotkey_, &HotkeySection::refreshHotkeyUi); }
	void runInstaller(const QString &path) { callPart(installer_, &Installer::runInstaller, path); }
	void installerFinished(int exitCode) { callPart(installer_, &Installer::installerFinished, exitCode); }
	void pollInstaller() { callPart(installer_, &Installer::pollInstaller); }
	void connectAccount() { callPart(account_, &Account::connectAccount); }
	void openFolder() { callPart(recent_, &RecentSection::openFolder); }
	void savePrefs() { callPart(choices_, &ChoicesSection::savePrefs); }

protected:
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
