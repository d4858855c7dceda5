#pragma once

#include <QObject>

#include <memory>

/// Adds a test class to the program that it is linked into. QtTest's own QTEST_MAIN makes a program of each class.
///
/// `PROGRAM FILE [OPTION...]` runs the class of FILE.cpp, in a process of its own; the options are QtTest's, for
/// example the name of one test function.
#define KESTRUNE_TEST(Class) \
	[[maybe_unused]] static const bool is##Class##Known = \
		rememberTest(__FILE__, [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); });

/// Called before main() by KESTRUNE_TEST; true.
bool rememberTest(const char *file, std::unique_ptr<QObject> (*make)());
