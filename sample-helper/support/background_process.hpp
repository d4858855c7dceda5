#pragma once

class QProcess;

/// Has the program that `process` will start leave the processor to others when they need it, and die with this one,
/// however this one ends. To be called on the thread that starts it, which must last as long as the program does.
void runInBackground(QProcess &process);
