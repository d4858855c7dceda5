#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <thread>

/// Tells in the log how far an ffmpeg is that was started with "-progress FILE", from a thread of its own, as long as
/// the object lives.
class ProgressLog {
public:
	/// `length_s` is how much video there is to make. A file that is there already is removed.
	ProgressLog(const QString &file, double length_s, int interval_ms = 5000);

private:
	std::jthread thread_{};
};

/// How many seconds of video are made, by what ffmpeg has written to that file; nothing if it has not said yet.
std::optional<double> madeTime_s(const QByteArray &progress);

/// For example "12 of 60 s made (20 %), about 48 s to go".
QString progressText(double made_s, double length_s, double elapsed_s);
