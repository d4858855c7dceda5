#include <QApplication>
#include <QDir>
#include <QFile>
#include <QToolButton>

#include "dock/kestrune_dock.hpp"
#include "frontend/frontend.hpp"
#include "host.hpp"
#include "host/fake_runner.hpp"
#include "host/obs_session.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"

#include <util/bmem.h>
#include <util/dstr.h>

#ifdef KESTRUNE_FUZZ
#include <sanitizer/lsan_interface.h>
#endif

#include <array>
#include <cstdio>
#include <memory>

namespace {
// Left alone when a fuzzer exits, which is in the middle of everything: then Qt would be taken down in the wrong order.
QApplication *application = nullptr;
ObsSession *session = nullptr;

/// Ends the run of the fuzzer when something has leaked. A look takes as long as hundreds of inputs.
void lookForLeaksNowAndThen()
{
#ifdef KESTRUNE_FUZZ
	constexpr int interval = 500;
	static int docks = 0;
	if (++docks % interval == 0) {
		require(__lsan_do_recoverable_leak_check() == 0, "nothing leaks");
	}
#endif
}

/// Warnings about odd inputs are what Qt owes us here; only the reason of a finding is news.
void printFatal(QtMsgType type, const QMessageLogContext &, const QString &message)
{
	if (type == QtFatalMsg) {
		std::fprintf(stderr, "%s\n", qUtf8Printable(message));
	}
}
} // namespace

// The module's own functions are linked in, so no module is loaded whose folder libobs could name. Definitions of the
// executable win over those of the shared library.
char *obs_module_get_config_path(obs_module_t *, const char *file)
{
	return bstrdup(QDir(configFolder()).filePath(QString::fromUtf8(file)).toUtf8().constData());
}

void startHost()
{
	if (session) {
		return;
	}

	qputenv("QT_QPA_PLATFORM", "offscreen");
	qInstallMessageHandler(printFatal);
	static std::array<char, 5> name{"fuzz"};
	static std::array<char *, 2> arguments{name.data(), nullptr};
	static int count = 1;
	application = new QApplication(count, arguments.data());
	session = new ObsSession;
	base_set_log_handler([](int, const char *, va_list, void *) {}, nullptr);
	QDir().mkpath(configFolder());
	registerClipHotkey();
}

void stopHost()
{
	delete session;
	session = nullptr;
	delete application;
	application = nullptr;
}

QString configFolder()
{
	return session->configFolder();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
	QFile file(path);
	require(file.open(QIODevice::WriteOnly), "the file can be written");
	file.write(bytes);
}

QByteArray readFile(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray toBytes(const uint8_t *data, size_t size)
{
	return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

QByteArray takeLine(QByteArray &rest)
{
	const qsizetype newline = rest.indexOf('\n');
	const QByteArray line = rest.first(newline < 0 ? rest.size() : newline);
	rest.remove(0, line.size() + 1);
	return line;
}

void require(bool holds, const char *what)
{
	if (!holds) {
		qFatal("does not hold: %s", what);
	}
}

ShownDock::ShownDock()
{
	frontend() = {};
	frontend().mainWindow = &window_;
	auto helper = std::make_unique<FakeRunner>();
	helper_ = helper.get();
	dock_ = new KestruneDock(&window_, {}, std::move(helper));
	setCurrentDock(dock_);
	window_.setCentralWidget(dock_);
	for (QToolButton *toggle : dock_->findChildren<QToolButton *>()) {
		toggle->setChecked(true);
	}
	window_.resize(360, 720);
	window_.show();
}

ShownDock::~ShownDock()
{
	setCurrentDock(nullptr);
	delete dock_;
	// Else they are taken for a leak.
	QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
	lookForLeaksNowAndThen();
}

void ShownDock::invoke(const char *slot) const
{
	require(QMetaObject::invokeMethod(dock_, slot, Qt::DirectConnection), "the dock has this slot");
}
