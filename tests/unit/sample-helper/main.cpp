#include "suites.hpp"

#include <QCoreApplication>
#include <QTest>

#include <array>

namespace {
#ifdef Q_OS_WIN
// Windows programs are tested under Wine, without an ffmpeg.
constexpr std::array suites{makeCommandLineTest, makeSubtitlesTest, makeCaptionsTest, makeAccountTest,
			    makeRecentTest,      makeChatTest,      makeUpdateTest};
#else
constexpr std::array suites{makeCommandLineTest, makeSubtitlesTest, makeCaptionsTest, makeCaptionSourceTest,
			    makeEncodingTest,    makeAccountTest,   makeClipTest,     makeClipFailureTest,
			    makeLeftoversTest,   makePreviewTest,   makeRecentTest,   makeChatTest,
			    makeUpdateTest};
#endif
} // namespace

int main(int argc, char *argv[])
{
	const QCoreApplication application(argc, argv);
	int failures = 0;
	for (const auto &makeSuite : suites) {
		const std::unique_ptr<QObject> suite = makeSuite();
		failures += QTest::qExec(suite.get(), QCoreApplication::arguments());
	}
	return failures;
}
