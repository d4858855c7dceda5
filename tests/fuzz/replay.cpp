#include <QDir>
#include <QFile>

#include "input.hpp"

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {
void replay(const QString &path)
{
	QFile file(path);
	require(file.open(QIODevice::ReadOnly), "the input can be read");
	const QByteArray input = file.readAll();
	LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()), static_cast<size_t>(input.size()));
}
} // namespace

/// Runs a fuzz target once with each file of the folders named on the command line.
int main(int argc, char **argv)
{
	int inputs = 0;
	for (int argument = 1; argument < argc; ++argument) {
		const QDir folder(QString::fromLocal8Bit(argv[argument]));
		for (const QString &name : folder.entryList(QDir::Files)) {
			std::printf("%s\n", qUtf8Printable(name));
			std::fflush(stdout);
			replay(folder.filePath(name));
			++inputs;
		}
	}
	if (inputs == 0) {
		std::fprintf(stderr, "usage: %s CORPUS...\n", argv[0]);
		return 2;
	}
	stopHost();
	return 0;
}
