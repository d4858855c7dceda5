#include "support/background_process.hpp"

// Nothing that works alike on all other systems.
void runInBackground(QProcess &) {}
