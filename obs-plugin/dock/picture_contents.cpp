#include <QtEndian>

#include "dock/picture_contents.hpp"

namespace {
constexpr qsizetype pngSignature_bytes = 8;
// Bytes of the first chunk, IHDR, counted from the start of the file.
constexpr qsizetype pngFirstType = 12;
constexpr qsizetype pngWidth = 16;
constexpr qsizetype pngHeight = 20;
constexpr qsizetype pngBitDepth = 24;
constexpr qsizetype pngInterlace = 28;
constexpr qsizetype pngHeader_bytes = 33;

constexpr qsizetype maxJpeg_bytes = qsizetype{4} * 1024 * 1024;
constexpr uchar jpegMarker = 0xff;
constexpr uchar startOfScan = 0xda;

/// 16 bits make twice the work, and so does interlacing.
bool isTooLaborious(const QByteArray &png)
{
	constexpr quint64 most = quint64{2} * 1080 * 1920;
	const quint64 pixels = static_cast<quint64>(qFromBigEndian<quint32>(png.constData() + pngWidth)) *
			       qFromBigEndian<quint32>(png.constData() + pngHeight);
	const quint64 factor = quint64{png[pngBitDepth] == 16 ? 2U : 1U} * (png[pngInterlace] != 0 ? 2U : 1U);
	return pixels > most / factor;
}

/// Markers behind `start`, not counting escaped 0xff bytes and restart markers.
int markersFrom(QByteArrayView jpeg, qsizetype start)
{
	int count = 0;
	for (qsizetype at = start; at + 1 < jpeg.size(); ++at) {
		const auto next = static_cast<uchar>(jpeg[at + 1]);
		const bool isRestart = next >= 0xd0 && next <= 0xd7;
		if (static_cast<uchar>(jpeg[at]) == jpegMarker && next != 0 && next != jpegMarker && !isRestart) {
			++count;
		}
	}
	return count;
}

/// Comments and application data other than JFIF's and Adobe's, which tell how colours are stored.
bool isExtra(uchar marker)
{
	const bool isApplicationData = marker >= 0xe0 && marker <= 0xef;
	return marker == 0xfe || (isApplicationData && marker != 0xe0 && marker != 0xee);
}

bool usesArithmeticCoding(uchar marker)
{
	return marker >= 0xc9 && marker <= 0xcf && marker != 0xcc;
}
} // namespace

QByteArray plainPng(const QByteArray &png)
{
	constexpr qsizetype lengthAndType_bytes = 8;
	constexpr qsizetype checksum_bytes = 4;
	constexpr int maxChunks = 4096;
	if (png.size() < pngHeader_bytes || png.sliced(pngFirstType, 4) != "IHDR" || isTooLaborious(png)) {
		return {};
	}

	QByteArray kept;
	kept.reserve(png.size());
	kept += QByteArrayView(png).first(pngSignature_bytes);
	qsizetype start = pngSignature_bytes;
	bool hasTransparency = false;
	for (int chunks = 0; png.size() - start >= lengthAndType_bytes; ++chunks) {
		if (chunks == maxChunks) {
			return {};
		}
		const qsizetype length =
			lengthAndType_bytes + qFromBigEndian<quint32>(png.constData() + start) + checksum_bytes;
		const QByteArrayView type = QByteArrayView(png).sliced(start + 4, 4);
		const bool isNeeded = (type[0] & 0x20) == 0;
		const bool isFirstTransparency = type == "tRNS" && !hasTransparency;
		if (isNeeded || isFirstTransparency) {
			kept += QByteArrayView(png).sliced(start, qMin(length, png.size() - start));
		}
		hasTransparency = hasTransparency || isFirstTransparency;
		start += qMin(length, png.size() - start);
	}
	return kept;
}

QByteArray plainJpeg(const QByteArray &jpeg)
{
	constexpr int maxMarkers = 200;
	constexpr qsizetype maxScans = 12;
	if (jpeg.size() > maxJpeg_bytes || jpeg.count("\xff\xda") > maxScans) {
		return {};
	}

	QByteArray kept = jpeg.left(2);
	qsizetype start = 2;
	for (int markers = 0; markers < maxMarkers && jpeg.size() - start >= 4; ++markers) {
		const auto marker = static_cast<uchar>(jpeg[start + 1]);
		if (static_cast<uchar>(jpeg[start]) != jpegMarker || usesArithmeticCoding(marker)) {
			return {};
		}
		if (marker == startOfScan) {
			return markersFrom(jpeg, start) > maxMarkers ? QByteArray() : kept + jpeg.sliced(start);
		}
		const qsizetype length = 2 + qFromBigEndian<quint16>(jpeg.constData() + start + 2);
		if (!isExtra(marker)) {
			kept += jpeg.mid(start, length);
		}
		start += length;
	}
	return {};
}
