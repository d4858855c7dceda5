#pragma once

#include <QtGlobal>

struct ProcessFigures {
	qint64 memory_KiB{0};
	qint64 peakMemory_KiB{0};
	qsizetype fileDescriptors{0};
	qsizetype childProcesses{0};
};

ProcessFigures processFigures();

void resetPeakMemory();
