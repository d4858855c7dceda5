#include <QFileInfo>
#include <QMap>
#include <QTest>

#include "host/test_program.hpp"

#include <cstdio>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

namespace {
using MakeTest = std::unique_ptr<QObject> (*)();

QMap<QString, MakeTest> &tests()
{
	static QMap<QString, MakeTest> byName;
	return byName;
}
} // namespace

bool rememberTest(const char *file, MakeTest make)
{
	tests().insert(QFileInfo(QString::fromUtf8(file)).completeBaseName(), make);
	return true;
}

int main(int argc, char *argv[])
{
	Application::setAttribute(Qt::AA_Use96Dpi);
	const Application application(argc, argv);
	QStringList arguments = Application::arguments();
	const MakeTest make = tests().value(arguments.value(1));
	if (!make) {
		std::fprintf(stderr, "usage: %s TEST [OPTION...]; tests are: %s\n", argv[0],
			     qUtf8Printable(tests().keys().join(u", ")));
		return 2;
	}
	arguments.removeAt(1);
	const std::unique_ptr<QObject> test = make();
	return QTest::qExec(test.get(), arguments);
}
