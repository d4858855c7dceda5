#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

#include "dock/preview_picture.hpp"
#include "host/system.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class PreviewPictureTest : public QObject {
	Q_OBJECT

	static constexpr QSize room_px_{160, 284};
	QTemporaryDir folder_{};

	static QByteArray encoded(const QImage &image, const char *format)
	{
		QBuffer buffer;
		image.save(&buffer, format);
		return buffer.data();
	}
	static QByteArray plain(QSize size_px, const char *format)
	{
		QImage image(size_px, QImage::Format_RGB32);
		image.fill(Qt::cyan);
		return encoded(image, format);
	}
	/// A PNG chunk that libpng takes for damaged: nobody may look at it.
	static QByteArray chunk(const QByteArray &type, const QByteArray &data)
	{
		QByteArray bytes;
		QDataStream stream(&bytes, QDataStream::WriteOnly);
		stream << static_cast<quint32>(data.size());
		stream.writeRawData((type + data).constData(), static_cast<int>(4 + data.size()));
		stream << quint32{0};
		return bytes;
	}

	/// Nine levels of ten uses each: to lay it out takes hours.
	static QByteArray drawing()
	{
		QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg'><defs><rect id='g0' width='9' height='9'/>";
		for (int level = 1; level <= 9; ++level) {
			const QByteArray use = "<use href='#g" + QByteArray::number(level - 1) + "'/>";
			svg += "<g id='g" + QByteArray::number(level) + "'>" + use.repeated(10) + "</g>";
		}
		return svg + "</defs><use href='#g9'/></svg>";
	}

	QImage read(const QByteArray &contents)
	{
		const QString path = folder_.filePath(u"picture"_s);
		QFile file(path);
		if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
			qFatal("cannot write %s", qPrintable(path));
		}
		file.close();
		return readPreviewPicture(path, room_px_);
	}

private Q_SLOTS:
	void fitsIntoTheRoom_data()
	{
		QTest::addColumn<QSize>("size_px");
		QTest::addColumn<QSize>("shown_px");
		QTest::newRow("upright") << QSize(1080, 1920) << QSize(159, 284);
		QTest::newRow("wide") << QSize(1920, 1080) << QSize(160, 90);
		QTest::newRow("large") << QSize(1440, 2560) << QSize(159, 284);
		QTest::newRow("small ones grow") << QSize(16, 16) << QSize(160, 160);
		QTest::newRow("a line") << QSize(1, 2000) << QSize(1, 284);
	}
	void fitsIntoTheRoom()
	{
		QFETCH(QSize, size_px);
		QFETCH(QSize, shown_px);
		const QImage picture = read(plain(size_px, "png"));
		QCOMPARE(picture.size(), shown_px);
		QCOMPARE(picture.pixelColor(0, 3), QColor(Qt::cyan));
	}

	void readsFormats_data()
	{
		QTest::addColumn<QByteArray>("format");
		for (const char *format : {"png", "jpg", "bmp", "ppm"}) {
			QTest::newRow(format) << QByteArray(format);
		}
	}
	void readsFormats()
	{
		QFETCH(QByteArray, format);
		QCOMPARE(read(plain({90, 160}, format.constData())).size(), QSize(159, 284));
	}

	void keepsWhatIsTransparent()
	{
		QImage image(90, 160, QImage::Format_Indexed8);
		image.setColorTable({qRgba(0, 0, 0, 0), qRgb(255, 0, 0)});
		image.fill(0);
		QCOMPARE(read(encoded(image, "png")).pixelColor(9, 9).alpha(), 0);
	}

	void doesNotUnpackTextsInAPng()
	{
		QByteArray png = plain({90, 160}, "png");
		const QByteArray broken = chunk("zTXt", "a" + QByteArray(1, 0) + "a" + QByteArray(100, 'x'));
		const QByteArray unknownButNeeded = chunk("ABCD", "x");
		QCOMPARE(read(QByteArray(png).insert(33, broken)).size(), QSize(159, 284));
		QVERIFY(read(QByteArray(png).insert(33, unknownButNeeded)).isNull());
	}

	void refusesWhatIsNoSmallPicture_data()
	{
		QTest::addColumn<QByteArray>("contents");
		const QByteArray jpeg = plain({90, 160}, "jpg");
		QTest::newRow("nothing") << QByteArray();
		QTest::newRow("text") << QByteArray("just a text");
		QTest::newRow("drawing") << drawing();
		QTest::newRow("many pixels") << plain({8000, 8000}, "png");
		QTest::newRow("truncated in its header") << plain({90, 160}, "png").first(20);
		QTest::newRow("many scans") << jpeg + QByteArray("\xff\xda").repeated(30);
		QTest::newRow("large file") << plain({90, 160}, "png") + QByteArray(8 * 1024 * 1024, 'x');
	}
	void refusesWhatIsNoSmallPicture()
	{
		QFETCH(QByteArray, contents);
		QVERIFY(read(contents).isNull());
	}

	void refusesWhatIsNoFile()
	{
		const QString pipe = newPipe(folder_.filePath(u"pipe"_s));
		QVERIFY(readPreviewPicture(pipe, room_px_).isNull());
		QVERIFY(readPreviewPicture(folder_.path(), room_px_).isNull());
		QVERIFY(readPreviewPicture(folder_.filePath(u"missing"_s), room_px_).isNull());
		QVERIFY(readPreviewPicture({}, room_px_).isNull());
	}

	void refusesWhatLiesOnAnotherComputer()
	{
		read(plain({90, 160}, "png"));
		QVERIFY(!readPreviewPicture(folder_.filePath(u"picture"_s), room_px_).isNull());
		QVERIFY(readPreviewPicture(u'/' + folder_.filePath(u"picture"_s), room_px_).isNull());
	}

	void followsLinks()
	{
		read(plain({90, 160}, "png"));
		const QString link = folder_.filePath(u"link.lnk"_s);
		QVERIFY(QFile::link(folder_.filePath(u"picture"_s), link));
		// A shortcut on Windows is a file of its own, which only programs of the desktop follow.
		QCOMPARE(readPreviewPicture(link, room_px_).isNull(), QSysInfo::productType() == u"windows");
	}
};

KESTRUNE_TEST(PreviewPictureTest)
#include "preview_picture.moc"
