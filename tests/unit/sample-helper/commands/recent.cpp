#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"

using namespace Qt::StringLiterals;

class RecentTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void listsNothingAtFirst();
	void listsTheTenNewestShortsFirst();
	void settlesEqualTimesByName();
	void listsWhatTheFutureBringsLast();
};

namespace {
void writeShort(const Sandbox &sandbox, const QString &name, const QDateTime &time)
{
	QFile file(sandbox.writeFile(u"Shorts/"_s + name, "x"));
	QVERIFY(file.open(QIODevice::ReadWrite));
	QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

QStringList names(const Run &run)
{
	QStringList result{};
	const QJsonArray items = run.onlyEvent()[u"items"].toArray();
	for (const auto &item : items) {
		result += item[u"name"].toString();
	}
	return result;
}
} // namespace

void RecentTest::listsNothingAtFirst()
{
	const Sandbox sandbox;
	const Run run = sandbox.run({u"--recent"_s});
	QCOMPARE(run.exitCode, 0);
	const QJsonObject expected{
		{u"event"_s, u"recent"_s}, {u"folder"_s, sandbox.shortsFolder()}, {u"items"_s, QJsonArray()}};
	QCOMPARE(run.onlyEvent(), expected);
	QVERIFY2(QFile::exists(sandbox.shortsFolder()), "the folder can be opened before the first clip");
}

void RecentTest::listsTheTenNewestShortsFirst()
{
	const Sandbox sandbox;
	const QDateTime now = QDateTime::currentDateTime();
	QStringList expected{};
	for (int age = 0; age < 12; ++age) {
		const QString name = u"short %1 é.mp4"_s.arg((age * 7) % 12);
		writeShort(sandbox, name, now.addSecs(qint64{-60} * age));
		if (age < 10) {
			expected += name;
		}
	}
	writeShort(sandbox, u"short-now.part"_s, now.addSecs(60));
	writeShort(sandbox, u"notes.txt"_s, now.addSecs(60));
	const Run run = sandbox.run({u"--recent"_s});
	QCOMPARE(names(run), expected);
	const QJsonObject first = run.onlyEvent()[u"items"].toArray().at(0).toObject();
	QCOMPARE(first[u"path"].toString(), sandbox.shortsFolder() + u'/' + first[u"name"].toString());
}

void RecentTest::settlesEqualTimesByName()
{
	const Sandbox sandbox;
	const QDateTime now = QDateTime::currentDateTime();
	for (const char *name : {"short-2.mp4", "short-3.mp4", "short-1.mp4"}) {
		writeShort(sandbox, QLatin1String(name), now);
	}
	QCOMPARE(names(sandbox.run({u"--recent"_s})),
		 (QStringList{u"short-3.mp4"_s, u"short-2.mp4"_s, u"short-1.mp4"_s}));
}

void RecentTest::listsWhatTheFutureBringsLast()
{
	const Sandbox sandbox;
	const QDateTime now = QDateTime::currentDateTime();
	writeShort(sandbox, u"clock-was-wrong.mp4"_s, now.addDays(400));
	writeShort(sandbox, u"yesterday.mp4"_s, now.addDays(-1));
	writeShort(sandbox, u"clock-of-another-computer.mp4"_s, now.addSecs(3600));
	QCOMPARE(names(sandbox.run({u"--recent"_s})),
		 (QStringList{u"clock-of-another-computer.mp4"_s, u"yesterday.mp4"_s, u"clock-was-wrong.mp4"_s}));
}

KESTRUNE_TEST(RecentTest)
#include "recent.moc"
