#pragma once

#include <QObject>

#include <memory>

/// Adds a test class to its program; QTEST_MAIN would make one program per class.
///
/// `PROGRAM FILE [OPTION...]` runs the class of FILE.cpp in its own process. The options are QtTest's, for example a
/// test function's name.
#define KESTRUNE_TEST(Class) \
	[[maybe_unused]] static const bool is##Class##Known = \
		rememberTest(__FILE__, [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); });

/// Called before main() by KESTRUNE_TEST. Always true.
bool rememberTest(const char *file, std::unique_ptr<QObject> (*make)());
