#include <QBuffer>
#include <QDataStream>
#include <QImage>
#include <QTest>

#include "dock/picture_contents.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class PictureContentsTest : public QObject {
	Q_OBJECT

	static QByteArray encoded(const char *format, QImage::Format pixels = QImage::Format_RGB32,
				  QSize size_px = {90, 160})
	{
		QImage image(size_px, pixels);
		image.fill(Qt::cyan);
		QBuffer buffer;
		image.save(&buffer, format);
		return buffer.data();
	}
	static QByteArray chunk(const QByteArray &type, const QByteArray &data)
	{
		QByteArray bytes;
		QDataStream stream(&bytes, QDataStream::WriteOnly);
		stream << static_cast<quint32>(data.size());
		stream.writeRawData((type + data).constData(), static_cast<int>(4 + data.size()));
		stream << quint32{0};
		return bytes;
	}
	/// A PNG with these bytes behind its header.
	static QByteArray pngWith(const QByteArray &chunks) { return encoded("png").insert(33, chunks); }
	static QByteArray segment(char marker, const QByteArray &data)
	{
		const auto length = static_cast<quint16>(2 + data.size());
		return QByteArray("\xff") + marker + static_cast<char>(length >> 8) + static_cast<char>(length & 0xff) +
		       data;
	}
	/// A JPEG with these bytes behind its first marker.
	static QByteArray jpegWith(const QByteArray &segments) { return encoded("jpg").insert(2, segments); }

private Q_SLOTS:
	void aPngKeepsItsPicture()
	{
		const QByteArray png = plainPng(encoded("png", QImage::Format_ARGB32));
		QCOMPARE(QImage::fromData(png, "png").size(), QSize(90, 160));
	}
	void aPngLosesItsTexts()
	{
		const QByteArray texts = chunk("zTXt", "a" + QByteArray(100, 0)) + chunk("iCCP", "b");
		QCOMPARE(plainPng(pngWith(texts)).size(), plainPng(encoded("png")).size());
	}
	void aPngKeepsOneTransparency()
	{
		const QByteArray once = plainPng(pngWith(chunk("tRNS", {})));
		QCOMPARE(plainPng(pngWith(chunk("tRNS", {}).repeated(100))).size(), once.size());
	}
	void aLaboriousPngIsRefused()
	{
		QVERIFY(plainPng(pngWith(chunk("IDAT", {}).repeated(5000))).isEmpty());
		QVERIFY(!plainPng(encoded("png", QImage::Format_RGB32, {1440, 2560})).isEmpty());
		QVERIFY(plainPng(encoded("png", QImage::Format_RGBA64, {1440, 2560})).isEmpty());
		QVERIFY(!plainPng(encoded("png", QImage::Format_RGBA64, {1080, 1920})).isEmpty());
		QVERIFY(plainPng(encoded("png", QImage::Format_RGB32, {8000, 8000})).isEmpty());
		QVERIFY(plainPng(encoded("png").first(20)).isEmpty());
		// Sizes would be read from the wrong chunk.
		QVERIFY(plainPng(encoded("png").insert(8, chunk("teXt", QByteArray(20, 1)))).isEmpty());
	}

	void aJpegKeepsItsPicture()
	{
		QCOMPARE(QImage::fromData(plainJpeg(encoded("jpg")), "jpg").size(), QSize(90, 160));
	}
	void aJpegLosesItsExtras()
	{
		const QByteArray extras = segment('\xfe', "comment") + segment('\xe1', "Exif");
		QCOMPARE(plainJpeg(jpegWith(extras)), plainJpeg(encoded("jpg")));
	}
	void aLaboriousJpegIsRefused_data()
	{
		QTest::addColumn<QByteArray>("jpeg");
		QTest::newRow("many comments") << jpegWith(segment('\xfe', {}).repeated(1000));
		QTest::newRow("many scans") << encoded("jpg") + QByteArray("\xff\xda").repeated(30);
		QTest::newRow("many markers behind the picture") << encoded("jpg") + segment('\xfe', {}).repeated(1000);
		QTest::newRow("arithmetic coding") << jpegWith(segment('\xc9', "x"));
		QTest::newRow("no picture") << encoded("jpg").first(100);
		QTest::newRow("large") << encoded("jpg") + QByteArray(qsizetype{4} * 1024 * 1024, 'x');
		QTest::newRow("two bytes") << QByteArray("\xff\xd8");
		QTest::newRow("length beyond the end") << QByteArray("\xff\xd8\xff\xe0\xff\xff");
	}
	void aLaboriousJpegIsRefused()
	{
		QFETCH(QByteArray, jpeg);
		QVERIFY(plainJpeg(jpeg).isEmpty());
	}
};

KESTRUNE_TEST(PictureContentsTest)
#include "picture_contents.moc"
