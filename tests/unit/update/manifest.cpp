#include <QTest>

#include "host/test_program.hpp"
#include "update/manifest.hpp"

using namespace Qt::StringLiterals;

class ManifestTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void readsTheManifestsVersion_data()
	{
		QTest::addColumn<QByteArray>("json");
		QTest::addColumn<QString>("version");
		QTest::newRow("plain") << QByteArray("{\"version\": \"1.0.7\", \"other\": 3}") << u"1.0.7"_s;
		QTest::newRow("as it stands") << QByteArray("{\"version\": \" v1.0.7 \"}") << u" v1.0.7 "_s;
		QTest::newRow("absent") << QByteArray("{\"Version\": \"1.0.7\"}") << QString();
		QTest::newRow("a number") << QByteArray("{\"version\": 1.07}") << QString();
		QTest::newRow("an array") << QByteArray("[{\"version\": \"1.0.7\"}]") << QString();
		QTest::newRow("not JSON") << QByteArray("version: 1.0.7") << QString();
		QTest::newRow("empty") << QByteArray() << QString();
	}
	void readsTheManifestsVersion()
	{
		QFETCH(QByteArray, json);
		QFETCH(QString, version);
		QCOMPARE(manifestVersion(json), version);
	}
};

KESTRUNE_TEST(ManifestTest)
#include "manifest.moc"
