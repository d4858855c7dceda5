#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

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

	void readsABitmapStoredFromTopToBottom()
	{
		QByteArray bitmap = plain({90, 160}, "bmp");
		qToLittleEndian(qint32{-160}, bitmap.data() + 22); // its height
		QCOMPARE(read(bitmap).size(), QSize(159, 284));
	}

	void keepsWhatIsTransparent()
	{
		QImage image(90, 160, QImage::Format_Indexed8);
		image.setColorTable({qRgba(0, 0, 0, 0), qRgb(255, 0, 0)});
		image.fill(0);
		QCOMPARE(read(encoded(image, "png")).pixelColor(9, 9).alpha(), 0);
	}

	void refusesWhatIsNoSmallPicture_data()
	{
		QTest::addColumn<QByteArray>("contents");
		QTest::newRow("nothing") << QByteArray();
		QTest::newRow("text") << QByteArray("just a text");
		QTest::newRow("drawing") << drawing();
		QTest::newRow("many pixels") << plain({8000, 8000}, "png");
		QTest::newRow("truncated in its header") << plain({90, 160}, "png").first(20);
		QTest::newRow("large file") << plain({90, 160}, "png") + QByteArray(qsizetype{9} * 1024 * 1024, 'x');
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
		const QString path = folder_.filePath(u"picture"_s);
		for (const QString &prefix : {u"/"_s, u"\\\\?\\UNC\\"_s, u"/?\?/"_s, u"\\\\host\\share\\"_s, u"./"_s}) {
			QVERIFY(readPreviewPicture(prefix + path, room_px_).isNull());
		}
	}

	void followsLinks()
	{
		read(plain({90, 160}, "png"));
		// Windows has shortcuts instead, which may lead to another computer.
		const bool isWindows = QSysInfo::productType() == u"windows";
		const QString link = folder_.filePath(isWindows ? u"link.lnk"_s : u"link"_s);
		QVERIFY(QFile::link(folder_.filePath(u"picture"_s), link));
		QCOMPARE(readPreviewPicture(link, room_px_).isNull(), isWindows);
	}
};

KESTRUNE_TEST(PreviewPictureTest)
#include "preview_picture.moc"
