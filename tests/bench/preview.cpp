// Showing a preview as the dock does: reading a picture of 1080x1920 px at the size shown.

#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include "dock/preview_picture.hpp"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {
/// Like a frame of a game: shapes with a little noise, so it compresses, but not too well.
QImage picture()
{
	QImage image(1080, 1920, QImage::Format_RGB32);
	QRandomGenerator noise(1);
	for (int y = 0; y < image.height(); ++y) {
		for (int x = 0; x < image.width(); ++x) {
			image.setPixel(x, y, qRgb(x / 5, y / 8, ((x / 40 + y / 40) % 2 * 128) + noise.bounded(16)));
		}
	}
	return image;
}

void preview(benchmark::State &state, const char *format)
{
	const QTemporaryDir folder;
	const QString path = folder.filePath(u"preview"_s);
	if (!picture().save(path, format) || readPreviewPicture(path, {160, 284}).isNull()) {
		state.SkipWithError("no picture");
	}
	while (state.KeepRunning()) {
		benchmark::DoNotOptimize(readPreviewPicture(path, {160, 284}));
	}
}

BENCHMARK_CAPTURE(preview, jpeg, "JPEG")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(preview, png, "PNG")->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();
