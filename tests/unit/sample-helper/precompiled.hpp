#pragma once

// What most tests include, compiled once. Each file still names what it uses: not every build precompiles.

#include "../../../sample-helper/precompiled.hpp"

#include <QTest>
