#include "suites.hpp"

#include <QCoreApplication>
#include <QTest>

int main(int argc, char *argv[])
{
	const QCoreApplication application(argc, argv);
	int failures = 0;
	for (const auto &makeSuite : {makeCommandLineTest, makeAccountTest, makeClipTest, makeClipFailureTest,
				      makePreviewTest, makeRecentTest, makeChatTest, makeUpdateTest}) {
		const std::unique_ptr<QObject> suite = makeSuite();
		failures += QTest::qExec(suite.get(), QCoreApplication::arguments());
	}
	return failures;
}
