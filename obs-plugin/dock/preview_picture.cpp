#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>

#include "dock/picture_contents.hpp"
#include "dock/preview_picture.hpp"

using namespace Qt::StringLiterals;

namespace {
// A PNG or BMP of 1080x1920 px with transparency that cannot be packed still fits.
constexpr qint64 maxFile_bytes = qint64{9} * 1024 * 1024;
constexpr qint64 maxPicture_px = qint64{2} * 1080 * 1920;

/// Whether the path names a drive or folder of this computer: `C:\…` or `/…`. To open another computer's file may take
/// minutes. A shortcut is asked for its target, wherever that is.
bool isLocal(const QString &path)
{
	static const QRegularExpression local(uR"(^(\\\\\?\\)?[A-Za-z]:[\\/]|^/[^/\\?])"_s);
	return local.match(path).hasMatch() && !path.endsWith(u".lnk", Qt::CaseInsensitive);
}

QByteArray fileContents(const QString &path)
{
	if (!isLocal(path)) {
		return {};
	}
	// Opening a pipe would block for ever; files that the system generates while they are read report no size.
	const QFileInfo info(path);
	QFile file(path);
	if (!info.isFile() || info.size() == 0 || info.size() > maxFile_bytes || !file.open(QIODevice::ReadOnly)) {
		return {};
	}
	return file.read(maxFile_bytes);
}

/// What Qt calls the format, by the first bytes; empty for formats that are not shown. Qt itself would load all of its
/// plugins, and have each look at the file.
QByteArray formatOf(const QByteArray &contents)
{
	if (contents.startsWith("\x89PNG\r\n\x1a\n")) {
		return "png";
	}
	if (contents.startsWith("\xff\xd8\xff")) {
		return "jpeg";
	}
	if (contents.startsWith("BM")) {
		return "bmp";
	}
	return contents.startsWith("P3") || contents.startsWith("P6") ? "ppm" : QByteArray();
}
} // namespace

QImage readPreviewPicture(const QString &path, QSize room_px)
{
	QByteArray contents = fileContents(path);
	const QByteArray format = formatOf(contents);
	if (format == "png") {
		contents = plainPng(contents);
	} else if (format == "jpeg") {
		contents = plainJpeg(contents);
	} else if (format.isEmpty()) {
		return {};
	}

	QBuffer buffer(&contents);
	QImageReader reader(&buffer, format);
	QSize size_px = reader.size();
	// The height of a BMP that is stored from top to bottom is negative.
	if (size_px.height() < 0 && size_px.height() > -maxPicture_px) {
		size_px.setHeight(-size_px.height());
	}
	if (size_px.isEmpty() || static_cast<qint64>(size_px.width()) * size_px.height() > maxPicture_px) {
		return {};
	}
	reader.setScaledSize(size_px.scaled(room_px, Qt::KeepAspectRatio).expandedTo({1, 1}));
	return reader.read();
}
