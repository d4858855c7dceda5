#include <QElapsedTimer>
#include <QFile>

#include "video/progress.hpp"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {
/// The end of what ffmpeg has written: it appends a block of some 300 bytes now and then.
QByteArray lastBlocks(const QString &path)
{
	constexpr qint64 twoBlocks_bytes = 1000;
	QFile file(path);
	if (!file.open(QIODevice::ReadOnly)) {
		return {};
	}
	file.seek(std::max<qint64>(0, file.size() - twoBlocks_bytes));
	return file.read(twoBlocks_bytes);
}

void tellUntil(const std::stop_token &stop, const QString &file, double length_s, int interval_ms)
{
	QElapsedTimer timer;
	timer.start();
	std::mutex mutex{};
	std::condition_variable_any stopped{};
	std::unique_lock lock(mutex);
	while (!stop.stop_requested()) {
		stopped.wait_for(lock, stop, std::chrono::milliseconds(interval_ms), [] { return false; });
		const std::optional<double> made_s = madeTime_s(lastBlocks(file));
		if (made_s && !stop.stop_requested()) {
			const double elapsed_s = static_cast<double>(timer.elapsed()) / 1000;
			qInfo("%s", qUtf8Printable(progressText(*made_s, length_s, elapsed_s)));
		}
	}
}
} // namespace

ProgressLog::ProgressLog(const QString &file, double length_s, int interval_ms)
{
	QFile::remove(file);
	thread_ = std::jthread(tellUntil, file, length_s, interval_ms);
}

std::optional<double> madeTime_s(const QByteArray &progress)
{
	// In microseconds; "N/A" before the first frame.
	const QByteArray name = "out_time_us=";
	const qsizetype line = progress.lastIndexOf(name);
	const qsizetype end = progress.indexOf('\n', line);
	if (line < 0 || end < 0) {
		return std::nullopt;
	}
	bool isNumber = false;
	const qlonglong made_us =
		progress.mid(line + name.size(), end - line - name.size()).trimmed().toLongLong(&isNumber);
	return isNumber && made_us >= 0 ? std::optional(static_cast<double>(made_us) / 1e6) : std::nullopt;
}

QString progressText(double made_s, double length_s, double elapsed_s)
{
	const double made = std::clamp(length_s > 0 ? made_s / length_s : 0, 0.0, 1.0);
	const QString text = u"%1 of %2 s made (%3 %)"_s.arg(made * length_s, 0, 'f', 0)
				     .arg(length_s, 0, 'f', 0)
				     .arg(made * 100, 0, 'f', 0);
	// Too little to estimate from.
	constexpr double minShare = 0.01;
	return made < minShare ? text : text + u", about %1 s to go"_s.arg(elapsed_s / made - elapsed_s, 0, 'f', 0);
}
