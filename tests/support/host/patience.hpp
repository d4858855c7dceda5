#pragma once

#include <QTest>

/// How long tests wait for an expected event; only a failing test waits this long.
inline constexpr int patience_ms = 60000;

// Qt waits 5 s, which is too short on a busy machine.
#undef QTRY_VERIFY
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patience_ms)
#undef QTRY_VERIFY2
#define QTRY_VERIFY2(condition, message) QTRY_VERIFY2_WITH_TIMEOUT(condition, message, patience_ms)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, patience_ms)
