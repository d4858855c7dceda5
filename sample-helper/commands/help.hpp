#pragma once

#include <QString>

/// What --help prints.
QString helpText();
