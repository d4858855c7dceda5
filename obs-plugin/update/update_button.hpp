#pragma once

#include <QObject>

#include <functional>

class QBoxLayout;
class QPushButton;
class StatusLine;

enum class UpdateState { None, Available, Downloading, Installing, Done, Error };

/// The state's name in the dock's signal: empty, "available", "downloading", "installing", "done" or "error".
QString updateStateName(UpdateState state);

/// The button that offers an update and shows how far it is. Hidden until there is one.
class UpdateButton : public QObject {
public:
	using StateCallback = std::function<void(const QString &state, const QString &text)>;

	/// `onStateChanged` gets each new state and its text, `onClicked` each click of the user.
	UpdateButton(QBoxLayout *layout, StatusLine &status, StateCallback onStateChanged,
		     std::function<void()> onClicked);

	UpdateState state() const { return state_; }
	/// No check and no click may disturb an update under way, and a finished one is final until OBS restarts.
	bool isUnderWayOrDone() const;

	/// The version that the helper offers or has downloaded.
	const QString &latestVersion() const { return latestVersion_; }
	void setLatestVersion(const QString &version) { latestVersion_ = version; }

	/// Offers the latest version; its notes become the tooltip. The status line stays.
	void offerUpdate(const QString &notes);
	/// Enters `state` and shows `text` on the button and the status line.
	void setUpdateState(UpdateState state, const QString &text);

private:
	void setUpdateButtonStyle(bool error);

	StatusLine &status_;
	StateCallback onStateChanged_{};
	QPushButton *button_{nullptr};
	UpdateState state_{UpdateState::None};
	QString latestVersion_{};
};
