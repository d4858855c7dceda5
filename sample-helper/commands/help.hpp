#pragma once

/// What --help prints.
extern const char *const helpText;
