#include <QProcess>

#include "support/background_process.hpp"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

void runInBackground(QProcess &process)
{
	// What the function does happens between fork() and exec(): system calls only.
	process.setChildProcessModifier([parent = getpid()] {
		constexpr int politeness = 10;
		[[maybe_unused]] const int niceness = nice(politeness);
		prctl(PR_SET_PDEATHSIG, SIGKILL);
		// A parent that died before the line above sends no signal any more.
		if (getppid() != parent) {
			_exit(1);
		}
	});
}
