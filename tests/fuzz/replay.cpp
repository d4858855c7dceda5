#include <QDir>
#include <QFile>

#include "host.hpp"

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Runs a fuzz target once with each file of the folder named on the command line.
int main(int argc, char **argv)
{
	const QDir folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
	const QStringList names = folder.entryList(QDir::Files);
	if (argc != 2 || names.isEmpty()) {
		std::fprintf(stderr, "usage: %s CORPUS\n", argv[0]);
		return 2;
	}

	for (const QString &name : names) {
		std::printf("%s\n", qUtf8Printable(name));
		std::fflush(stdout);
		QFile file(folder.filePath(name));
		if (!file.open(QIODevice::ReadOnly)) {
			return 1;
		}
		const QByteArray input = file.readAll();
		LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()),
				       static_cast<size_t>(input.size()));
	}
	stopHost();
	return 0;
}
