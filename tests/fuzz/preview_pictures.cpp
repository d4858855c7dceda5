#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QVBoxLayout>

#include "cost.hpp"
#include "dock/preview_label.hpp"
#include "dock_host.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <string>

using namespace Qt::StringLiterals;

// The first line of an input says what is at the preview's path: "file" and the ending of its name ("file png"; Qt
// looks at it), or "fifo", "folder", "device", "nothing". The rest is the file. No picture may open anything but
// itself, and only a regular file is opened at all: a FIFO would hold OBS up for ever.

namespace {
/// Makes what the line names; where it is.
QString make(const QByteArray &line, const QByteArray &content)
{
	QString folder = configFolder() + u"/preview"_s;
	QDir(folder).removeRecursively();
	QDir().mkpath(folder);
	QString path = folder + u"/picture"_s;
	if (line == "device") {
		return u"/dev/zero"_s;
	}
	if (line == "folder") {
		return folder;
	}
	if (line == "fifo") {
		require(mkfifo(path.toUtf8().constData(), 0600) == 0, "a FIFO can be made");
	} else if (line != "nothing") {
		QString ending = QString::fromUtf8(line.mid(line.indexOf(' ') + 1)).left(8);
		ending.removeIf([](QChar letter) { return !letter.isLetterOrNumber(); });
		writeFile(path + u'.' + ending, content);
		return path + u'.' + ending;
	}
	return path;
}

/// Opening what is not there does no harm.
bool mayBeOpened(const char *path)
{
	struct stat status{};
	return stat(path, &status) != 0 || S_ISREG(status.st_mode);
}

/// Qt looks for a reader of the picture once, and may load it from its plugins.
bool isPlugin(const std::string &path)
{
	return path.find("/imageformats") != std::string::npos || path.ends_with(".so");
}
/// A label in a visible window, so that its picture is laid out. It stays until the end: an application takes its
/// windows down with it.
PreviewLabel &shownLabel()
{
	auto *window = new QWidget;
	auto *layout = new QVBoxLayout(window);
	auto *label = new PreviewLabel;
	layout->addWidget(label);
	window->show();
	return *label;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHost();
	static PreviewLabel &label = shownLabel();

	QByteArray content = toBytes(data, size);
	const QByteArray line = takeLine(content);
	const std::string path = make(line, content).toStdString();
	const auto mayOpen = [&path](const char *opened, int flags) {
		return isPlugin(opened) || (path == opened && (flags == O_PATH || mayBeOpened(opened)));
	};
	{
		const CostWatch watch({.mayOpen = mayOpen});
		label.showPicture(QString::fromStdString(path));
		FuzzDock::settle();
	}
	const QSize shown = label.pixmap().size();
	require(label.isHidden() || (!shown.isEmpty() && shown.width() <= 160 && shown.height() <= 284),
		"a picture is shown small, or not at all");
	lookForLeaks();
	return 0;
}
