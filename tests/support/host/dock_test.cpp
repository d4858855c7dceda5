#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QPushButton>

#include "host/dock_test.hpp"

#include <algorithm>

namespace {
template<typename Widget> Widget *withText(const QWidget *parent, const QString &text)
{
	const QList<Widget *> widgets = parent->findChildren<Widget *>();
	const auto found =
		std::ranges::find_if(widgets, [&text](const Widget *widget) { return widget->text() == text; });
	return found == widgets.end() ? nullptr : *found;
}
} // namespace

void DockTest::init()
{
	frontend() = {};
	scratch_.emplace();
	helper_.emplace();
	openedUrls_.emplace();
	obs_.emplace();
	mainWindow_ = std::make_unique<QMainWindow>();
	mainWindow_->show();
	frontend().mainWindow = mainWindow_.get();
	qApp->setStyleSheet(u"QWidget { color: white; }"_s);
}

void DockTest::cleanup()
{
	destroyMainWindow();
	obs_.reset();
	module_ = nullptr;
	openedUrls_.reset();
	helper_.reset();
	scratch_.reset();
}

void DockTest::destroyMainWindow()
{
	mainWindow_.reset();
	frontend().mainWindow = nullptr;
}

bool DockTest::load()
{
	const QByteArray data = scratch_->path().toUtf8();
	return obs_open_module(&module_, KESTRUNE_MODULE, data.constData()) == MODULE_SUCCESS &&
	       obs_init_module(module_);
}

bool DockTest::loadReady()
{
	helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
	frontend().replayBufferActive = true;
	if (!load()) {
		return false;
	}
	invoke("refreshStatus");
	// A late answer to the dock's own first question would disturb the test.
	const bool ready = QTest::qWaitFor(
		[this] { return child<QPushButton>(u"clipBtn"_s)->isEnabled() && !isRunning(u"--status"_s); },
		patience_ms);
	helper().on(u"--status"_s, HelperScript().hang());
	return ready;
}

QJsonObject DockTest::linkedStatus()
{
	return {{u"event"_s, u"status"_s}, {u"linked"_s, true}, {u"login"_s, u"ana"_s}};
}

QWidget *DockTest::dock() const
{
	return frontend().docks.empty() ? nullptr : frontend().docks.back().widget.data();
}

QPushButton *DockTest::button(const QString &text) const
{
	return withText<QPushButton>(dock(), text);
}

QLabel *DockTest::label(const QString &text) const
{
	return withText<QLabel>(dock(), text);
}

QLabel *DockTest::status() const
{
	return child<QLabel>(u"status"_s);
}

bool DockTest::statusIs(const QString &text, const QString &colour) const
{
	return status()->text() == text && status()->styleSheet() == colour;
}

bool DockTest::isRunning(const QString &command) const
{
	const QList<QProcess *> processes = dock()->findChildren<QProcess *>();
	return std::ranges::any_of(
		processes, [&command](const QProcess *process) { return process->arguments().value(0) == command; });
}

bool DockTest::invoke(const char *slot) const
{
	return QMetaObject::invokeMethod(dock(), slot, Qt::DirectConnection);
}

void DockTest::choose(const QString &box, const QVariant &data) const
{
	auto *comboBox = child<QComboBox>(box);
	const int index = comboBox->findData(data);
	if (index < 0) {
		qFatal("%s has no such entry", qUtf8Printable(box));
	}
	comboBox->setCurrentIndex(index);
	Q_EMIT comboBox->activated(index);
}

QString DockTest::preferencesPath() const
{
	return QDir(obs().configFolder()).filePath(u"settings.json"_s);
}

QJsonObject DockTest::preferences() const
{
	QFile file(preferencesPath());
	if (!file.open(QIODevice::ReadOnly)) {
		return {};
	}
	return QJsonDocument::fromJson(file.readAll()).object();
}

void DockTest::writePreferences(const QByteArray &text, const QString &fileName) const
{
	QDir().mkpath(obs().configFolder());
	QFile file(QDir(obs().configFolder()).filePath(fileName));
	if (!file.open(QIODevice::WriteOnly)) {
		qFatal("cannot write %s", qUtf8Printable(file.fileName()));
	}
	file.write(text);
}
