#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QtEndian>

#include "dock/preview_picture.hpp"

using namespace Qt::StringLiterals;

namespace {
// A PNG of 1080x1920 px of mere noise still fits.
constexpr qint64 largestFile_bytes = 7 * 1024 * 1024;
constexpr qint64 largestPicture_px = 1440 * 2560;
constexpr qsizetype mostJpegScans = 20;

/// To open another computer's file may take minutes.
bool isOnAnotherComputer(const QString &path)
{
	return QDir::fromNativeSeparators(path).startsWith(u"//");
}

QByteArray fileContents(const QString &path)
{
	const QFileInfo info(path);
	QFile file(path);
	// A pipe would be waited for, for ever.
	if (isOnAnotherComputer(path) || !info.isFile() || info.size() > largestFile_bytes ||
	    !file.open(QIODevice::ReadOnly)) {
		return {};
	}
	return file.read(largestFile_bytes);
}

QByteArray formatOf(QByteArray contents)
{
	QBuffer buffer(&contents);
	buffer.open(QIODevice::ReadOnly);
	return QImageReader::imageFormat(&buffer);
}

/// A PNG without texts and colour profiles, of which libpng unpacks 8 MB each from a few bytes.
QByteArray withoutExtras(const QByteArray &png)
{
	constexpr qsizetype signature_bytes = 8;
	constexpr qsizetype lengthAndType_bytes = 8;
	constexpr qsizetype checksum_bytes = 4;

	QByteArray kept = png.first(signature_bytes);
	qsizetype start = signature_bytes;
	while (png.size() - start >= lengthAndType_bytes) {
		const qsizetype length =
			lengthAndType_bytes + qFromBigEndian<quint32>(png.constData() + start) + checksum_bytes;
		const QByteArrayView type = QByteArrayView(png).sliced(start + 4, 4);
		const bool isCritical = (type[0] & 0x20) == 0;
		if (isCritical || type == "tRNS") {
			kept += png.mid(start, length);
		}
		start += qMin(length, png.size() - start);
	}
	return kept;
}

/// A JPEG may be sent in any number of scans, each of which goes over the whole picture.
bool hasManyScans(const QByteArray &contents)
{
	return contents.count("\xff\xda") > mostJpegScans;
}

bool isSmallPicture(const QImageReader &reader)
{
	static const QList<QByteArray> formats{"bmp", "gif", "jpeg", "pbm", "pgm", "png", "ppm", "webp"};
	// The format first: to tell its size, a drawing is laid out.
	if (!formats.contains(reader.format())) {
		return false;
	}
	const QSize size_px = reader.size();
	return !size_px.isEmpty() && static_cast<qint64>(size_px.width()) * size_px.height() <= largestPicture_px;
}
} // namespace

QImage readPreviewPicture(const QString &path, QSize room_px)
{
	QByteArray contents = fileContents(path);
	const QByteArray format = formatOf(contents);
	if (format == "png") {
		contents = withoutExtras(contents);
	}
	QBuffer buffer(&contents);
	QImageReader reader(&buffer, format);
	if (!isSmallPicture(reader) || (format == "jpeg" && hasManyScans(contents))) {
		return {};
	}
	reader.setScaledSize(reader.size().scaled(room_px, Qt::KeepAspectRatio).expandedTo({1, 1}));
	return reader.read();
}
