#pragma once

#include <QObject>
#include <QString>

#include <obs.hpp>

/// OBS's own Replay Buffer, behind the frontend of the tests: it records a picture with x264 and silence with AAC,
/// from construction on, and has OBS's muxer write the file when the frontend is asked to save. Needs a running libobs
/// and ends before it.
class ReplayBufferOutput : public QObject {
public:
	/// Replays are saved in `folder`.
	explicit ReplayBufferOutput(const QString &folder);
	~ReplayBufferOutput() override;

	/// Whether libobs records; it says why not in its log.
	bool isActive() const { return obs_output_active(output_); }
	/// How much has been recorded so far.
	int recorded_s() const;

private:
	void save() const;
	/// Any thread.
	void onSaved();
	/// The file saved last.
	QByteArray lastReplay() const;

	OBSSourceAutoRelease picture_{};
	OBSEncoderAutoRelease video_{};
	OBSEncoderAutoRelease audio_{};
	OBSOutputAutoRelease output_{};
	OBSSignal saved_{};
};
