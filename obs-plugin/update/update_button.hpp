#pragma once

#include <QObject>

#include <cstdint>
#include <functional>

class QBoxLayout;
class QPushButton;
class StatusLine;

enum class UpdateState : std::uint8_t { None, Available, Downloading, Installing, Done, Error };

/// Offers an update and shows its progress. Hidden until there is one.
class UpdateButton : public QObject {
public:
	using StateCallback = std::function<void(UpdateState state, const QString &text)>;

	/// `onStateChanged` gets each new state and its text, `onClicked` the user's clicks.
	UpdateButton(QBoxLayout *layout, StatusLine &status, StateCallback onStateChanged,
		     std::function<void()> onClicked);

	UpdateState state() const { return state_; }
	/// No check or click may disturb an update under way, and a finished one is final until OBS restarts.
	bool isUnderWayOrDone() const;

	/// The version offered or downloaded.
	const QString &latestVersion() const { return latestVersion_; }
	void setLatestVersion(const QString &version) { latestVersion_ = version; }

	/// Offers the latest version, with `notes` as tooltip. The status line keeps its text.
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
