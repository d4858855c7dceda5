// Showing a preview: decoding a picture of 1080x1920 px, and scaling it for the dock.

#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>

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

QByteArray png()
{
	QBuffer buffer;
	picture().save(&buffer, "PNG");
	return buffer.data();
}

void decode(benchmark::State &state)
{
	const QByteArray bytes = png();
	while (state.KeepRunning()) {
		benchmark::DoNotOptimize(QImage::fromData(bytes));
	}
}

void fit(benchmark::State &state)
{
	const QImage image = picture();
	while (state.KeepRunning()) {
		benchmark::DoNotOptimize(image.scaled(160, 284, Qt::KeepAspectRatio, Qt::SmoothTransformation));
	}
}

BENCHMARK(decode)->Unit(benchmark::kMillisecond);
BENCHMARK(fit)->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();
