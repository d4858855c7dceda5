#include "host/patience.hpp"
#include "host/test_program.hpp"
#include "update/elevated_process.hpp"

#include <windows.h>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

class ElevatedProcessTest : public QObject {
	Q_OBJECT

	/// Handle values are multiples of four and the lowest free one is used, so this grows with each leaked handle.
	static quintptr nextHandle()
	{
		HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
		CloseHandle(event);
		return reinterpret_cast<quintptr>(event);
	}

	static void runOnce()
	{
		const ElevatedStart start = startElevated(u"" FAKE_INSTALLER ""_s, u"/QUIET"_s);
		QVERIFY(start.process);
		QCOMPARE(start.error, 0U);
		QTRY_VERIFY(start.process->exitCode());
		QCOMPARE(*start.process->exitCode(), 0);
	}

private Q_SLOTS:
	void ownsItsHandle()
	{
		HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
		DWORD flags = 0;
		{
			const ElevatedProcess process(handle);
			QVERIFY(GetHandleInformation(handle, &flags));
			QVERIFY(!process.exitCode()); // not signalled: still running
		}
		QVERIFY(!GetHandleInformation(handle, &flags));
	}

	void aHandleWithoutExitCodeCountsAsFailure()
	{
		const ElevatedProcess process(CreateEventW(nullptr, TRUE, TRUE, nullptr));
		QVERIFY(process.exitCode() == 1);
	}

	void handlesLeftOpenAreNoticed()
	{
		const quintptr before = nextHandle();
		std::vector<HANDLE> open(200);
		for (HANDLE &handle : open) {
			handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
		}
		QVERIFY(nextHandle() >= before + 4 * 150);
		std::ranges::for_each(open, CloseHandle);
	}

	void leavesNoHandleOpen()
	{
		runOnce(); // what the first start loads stays loaded
		const quintptr before = nextHandle();
		for (int run = 0; run < 200; ++run) {
			runOnce();
		}
		QVERIFY2(nextHandle() < before + 4 * 50, qPrintable(QString::number(nextHandle() - before)));
	}

	void aFailedStartLeavesNoHandleOpen()
	{
		const QString missing = u"C:/no such program.exe"_s;
		QVERIFY(!startElevated(missing, {}).process);
		const quintptr before = nextHandle();
		for (int run = 0; run < 200; ++run) {
			const ElevatedStart start = startElevated(missing, {});
			QVERIFY(!start.process);
			QCOMPARE(start.error, static_cast<quint32>(ERROR_FILE_NOT_FOUND));
		}
		QVERIFY2(nextHandle() < before + 4 * 50, qPrintable(QString::number(nextHandle() - before)));
	}
};

KESTRUNE_TEST(ElevatedProcessTest)
#include "elevated_process.moc"
