#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

struct obs_key_combination;

class ElevatedProcess;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QProcess;
class QPushButton;
class QSpinBox;
class QTimer;
class QVBoxLayout;

/// The module's one dock, and the only object with behaviour of its own: OBS, the user, timers and helper runs all
/// arrive here as calls on the user-interface thread. The members of each subsystem are in its folder; the way of one
/// clip is clip/clip_flow.cpp -> clip/clip_command.cpp -> helper/helper_runner.cpp.
class KestruneDock : public QWidget {
	Q_OBJECT

public:
	using EventCallback = std::function<void(const QJsonObject &event)>;
	using FinishCallback = std::function<void(int exitCode)>;

	/// `embed` gives the dock to its window before it has any content. OBS moves a new dock twice, and Qt applies
	/// OBS's theme to everything in it each time, which takes longer than all the rest.
	explicit KestruneDock(QWidget *parent, const std::function<void(QWidget *dock)> &embed = {});
	~KestruneDock() override;

	// OBS frontend events (module/frontend_events.cpp)
	void onReplaySaved();         ///< clip/clip_flow.cpp
	void onReplayBufferStarted(); ///< clip/replay_buffer.cpp
	void onReplayBufferStopped(); ///< clip/replay_buffer.cpp

Q_SIGNALS:
	void updateStateChanged(const QString &state, const QString &text);

	// Called by name from other threads and by remote tools: the order is part of the interface.
public Q_SLOTS:
	void clipThat();                                 ///< clip/clip_flow.cpp
	void refreshStatus();                            ///< clip/status.cpp
	void refreshRecent();                            ///< dock/recent_clips.cpp
	void updateClipButton();                         ///< clip/status.cpp
	void checkUpdate();                              ///< update/update_check.cpp
	void installUpdate();                            ///< update/update_check.cpp
	void startHotkeyCapture();                       ///< hotkey/hotkey_capture.cpp
	void refreshPreview();                           ///< dock/caption_choices.cpp
	void loadChat();                                 ///< chat/chat_settings.cpp
	void saveChat();                                 ///< chat/chat_settings.cpp
	void pollTriggers();                             ///< chat/trigger_polling.cpp
	void decorateChoices();                          ///< dock/caption_choices.cpp
	void refreshHotkeyUi();                          ///< hotkey/hotkey_section.cpp
	void runInstaller(const QString &installerPath); ///< update/installer.cpp
	void installerFinished(int exitCode);            ///< update/installer.cpp
	void pollInstaller();                            ///< update/installer.cpp
	void connectAccount();                           ///< clip/account_linking.cpp
	void openFolder();                               ///< dock/recent_clips.cpp
	void savePrefs();                                ///< dock/preferences.cpp

protected:
	/// Sees key presses of the "Set hotkey" button during a capture. hotkey/hotkey_capture.cpp
	bool eventFilter(QObject *watched, QEvent *event) override;

private:
	// The widget tree from top to bottom, then what starts it: dock/kestrune_dock.cpp
	void buildHeader(QVBoxLayout *mainLayout);
	QVBoxLayout *buildScrollArea(QVBoxLayout *mainLayout);
	void buildAccountRow(QVBoxLayout *content);
	void buildClipLength(QVBoxLayout *content);
	void buildStyleSection(QVBoxLayout *content);  ///< dock/caption_choices.cpp
	void buildHotkeySection(QVBoxLayout *content); ///< hotkey/hotkey_section.cpp
	void buildChatSection(QVBoxLayout *content);   ///< chat/chat_settings.cpp
	void buildRecentSection(QVBoxLayout *content); ///< dock/recent_clips.cpp
	void connectWidgets();
	void startWork();
	/// Fills the choice boxes, empty until then, and selects what the user chose last.
	void startChoices();
	/// Shows `text` on the status line, in the error colour when `error` is set, else in the information colour.
	void setStatus(const QString &text, bool error);

	// helper/helper_runner.cpp
	/// Starts the helper with `arguments`; its events and its end come to the callbacks (either may be empty).
	/// Null, and no callback ever, when the helper is missing. Runs may overlap and are never timed out.
	QProcess *runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish);
	/// Cuts off every run in flight: no callback runs any more.
	void silenceRuns();

	// dock/preferences.cpp
	void loadPrefs();

	// dock/accessibility.cpp
	/// Names what has no text of its own for screen readers, and gives the keyboard what only the mouse could do.
	void helpWithoutMouseAndSight();

	// dock/caption_choices.cpp
	void onChoiceChanged();
	void showPreview(const QJsonObject &event);

	// dock/recent_clips.cpp
	void showRecent(const QJsonObject &event);
	static void openClip(const QListWidgetItem *item);

	// clip/clip_flow.cpp
	void watchSave();
	void onClipEvent(const QJsonObject &event);
	void onClipJobFinished();

	// clip/replay_buffer.cpp
	/// True when the Replay Buffer runs; otherwise sets it up in the profile, asks OBS to start it, answers false.
	bool ensureReplayBuffer();

	// clip/status.cpp
	void applyStatus(const QJsonObject &status);
	void applyLinkedStatus(const QJsonObject &status);

	// clip/account_linking.cpp
	void onLinkEvent(const QJsonObject &event);

	// hotkey/hotkey_section.cpp, hotkey/hotkey_capture.cpp
	/// Binds the clip hotkey to `combination`, stores it and says so; false when nothing was done.
	bool applyHotkey(const obs_key_combination &combination);
	void endHotkeyCapture();
	void applyDefaultHotkey();

	// chat/chat_settings.cpp, chat/trigger_polling.cpp
	void onChatEvent(const QJsonObject &event);
	void renderChatState(const QJsonObject &chat);
	void showChatState(const QString &text);
	void onTriggers(const QJsonObject &event);

	// update/update_check.cpp
	void setUpdateButtonStyle(bool error);
	/// Enters `state` and shows `text` on the update button and the status line.
	void setUpdateState(const QString &state, const QString &text);
	void onUpdateCheckEvent(const QJsonObject &event);
	/// `settled` is set by the event that decides the download.
	void onDownloadEvent(const QJsonObject &event, bool &settled);

	// update/installer.cpp
	void startElevatedInstaller(const QString &installerPath);
	void startUpdateRunner(const QString &runner, const QString &installerPath);

	// Header and account
	QPushButton *clipButton_{nullptr};
	QLabel *status_{nullptr};
	QPushButton *updateButton_{nullptr};
	QLabel *accountLabel_{nullptr};
	QPushButton *connectButton_{nullptr};

	// Clip length, layout and captions; each entry carries its number or key as user-role data
	QComboBox *secondsBox_{nullptr};
	QComboBox *layoutBox_{nullptr};
	QComboBox *styleBox_{nullptr};
	QComboBox *fontBox_{nullptr};
	QComboBox *positionBox_{nullptr};
	QLabel *preview_{nullptr};
	QTimer *previewTimer_{nullptr};
	/// The user's own choices, empty when never made; they win over the helper's.
	QString preferredLayout_{};
	QString preferredStyle_{};
	QString preferredFont_{};

	// Hotkey
	QLabel *hotkeyLabel_{nullptr};
	QPushButton *setHotkeyButton_{nullptr};
	QPushButton *defaultHotkeyButton_{nullptr};
	bool capturing_{false};

	// Chat command
	QCheckBox *chatEnabled_{nullptr};
	QLineEdit *chatCommand_{nullptr};
	QSpinBox *chatCooldown_{nullptr};
	QSpinBox *chatCap_{nullptr};
	QLabel *chatState_{nullptr};
	QTimer *triggerTimer_{nullptr};
	/// The helper last reported the chat command enabled and granted.
	bool chatActive_{false};
	bool triggerPollBusy_{false};

	// Recent clips
	QListWidget *recentList_{nullptr};
	QPushButton *openFolderButton_{nullptr};
	QString outputFolder_{};

	// Account and clip flow
	bool linked_{false};
	/// A linking run is under way.
	bool linking_{false};
	/// A save was asked for and its replay-saved event has not come yet.
	bool clipPending_{false};
	/// The save watchdog is armed; it only speaks for the newest save, counted by saveGeneration_.
	bool awaitingSave_{false};
	quint64 saveGeneration_{0};
	/// Helper runs that make a Short and have not finished.
	qint32 clipJobsRunning_{0};

	// Update
	/// Empty, or "available", "downloading", "installing", "done" or "error".
	QString updateState_{};
	QString latestVersion_{};
	std::unique_ptr<ElevatedProcess> installer_{};
	QTimer *installerTimer_{nullptr};
	QElapsedTimer installStarted_{};
};
