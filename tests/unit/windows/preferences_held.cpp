#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QProcess>

#include "host/dock_test.hpp"

#include <windows.h>

/// Saving the preferences while another program has the file open, which Windows allows or not as that program says.
class PreferencesHeldTest : public DockTest {
	Q_OBJECT

	/// A program that has this file open until it is closed.
	static std::unique_ptr<QProcess> holder(const QString &path, DWORD access, DWORD sharing)
	{
		SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
		HANDLE file = CreateFileW(QDir::toNativeSeparators(path).toStdWString().c_str(), access, sharing,
					  &inherited, OPEN_EXISTING, 0, nullptr);
		if (file == INVALID_HANDLE_VALUE) {
			return nullptr;
		}
		auto process = std::make_unique<QProcess>();
		process->start(qEnvironmentVariable("KESTRUNE_HELPER"), {u"--hold"_s});
		const bool started = process->waitForStarted(30000);
		CloseHandle(file); // now the other program alone has it
		return started ? std::move(process) : nullptr;
	}

	QString style() const { return preferences()[u"style"_s].toString(); }

private Q_SLOTS:
	void theFileIsWholeThroughoutAndSavedAgainLater_data()
	{
		QTest::addColumn<quint32>("access");
		QTest::addColumn<quint32>("sharing");
		QTest::addColumn<bool>("saved");
		QTest::newRow("a reader that shares nothing") << quint32{GENERIC_READ} << quint32{0} << false;
		QTest::newRow("a reader that lets others read")
			<< quint32{GENERIC_READ} << quint32{FILE_SHARE_READ} << false;
		QTest::newRow("a writer that lets others read")
			<< quint32{GENERIC_WRITE} << quint32{FILE_SHARE_READ} << false;
		QTest::newRow("a reader that lets others do all")
			<< quint32{GENERIC_READ} << quint32{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}
			<< true;
	}
	void theFileIsWholeThroughoutAndSavedAgainLater()
	{
		QFETCH(quint32, access);
		QFETCH(quint32, sharing);
		QFETCH(bool, saved);
		helper().on(u"--hold"_s, HelperScript().hang());
		writePreferences(R"({"seconds": 90, "style": "meme", "of others": {"x": 1}})");
		QVERIFY(load());
		QCOMPARE(child<QComboBox>(u"style"_s)->currentData().toString(), u"meme"_s);
		{
			const std::unique_ptr<QProcess> other = holder(preferencesPath(), access, sharing);
			QVERIFY(other);
			choose(u"style"_s, u"neon"_s);
			QCOMPARE(child<QComboBox>(u"style"_s)->currentData().toString(), u"neon"_s);
			other->kill();
			QVERIFY(other->waitForFinished(30000));
		}
		QCOMPARE(style(), saved ? u"neon"_s : u"meme"_s);
		QCOMPARE(preferences()[u"of others"_s].toObject()[u"x"_s].toInt(), 1);

		choose(u"style"_s, u"clean"_s);
		QCOMPARE(style(), u"clean"_s);
		QCOMPARE(preferences()[u"seconds"_s].toInt(), 90);
		QCOMPARE(preferences()[u"of others"_s].toObject()[u"x"_s].toInt(), 1);
	}
};

KESTRUNE_TEST(PreferencesHeldTest)
#include "preferences_held.moc"
