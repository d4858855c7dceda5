#include "support/background_process.hpp"

// No mechanism works on all other systems.
void runInBackground(QProcess &) {}
