#pragma once

#include <QtGlobal>

/// Figures of this process as the system counts them.
struct ProcessFigures {
	qint64 memory_KiB{0};
	qint64 peakMemory_KiB{0};
	qsizetype fileDescriptors{0};
	qsizetype childProcesses{0};
};

ProcessFigures processFigures();

/// The peak is counted anew from here on.
void resetPeakMemory();
