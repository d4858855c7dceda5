#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QToolButton>
#include <QToolTip>

#include "cost.hpp"
#include "dock/choice_tables.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock_host.hpp"
#include "fake_frontend/fake_frontend.hpp"
#include "host/fake_runner.hpp"
#include "host/obs_session.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"

#include <util/bmem.h>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
// Never destroyed: a fuzzer exits in the middle of things, and Qt would be torn down in the wrong order.
QApplication *application = nullptr;
ObsSession *session = nullptr;

QJsonArray keysOf(ChoiceTable table)
{
	QJsonArray keys;
	for (const Choice &choice : table) {
		keys << QString::fromUtf8(choice.key);
	}
	return keys;
}

QByteArray line(const QString &kind, QJsonObject members = {})
{
	members[u"event"_s] = kind;
	return QJsonDocument(members).toJson(QJsonDocument::Compact) + '\n';
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
	printFindingsOnly();
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
	delete FuzzDock::made_;
	FuzzDock::made_ = nullptr;
	delete session;
	session = nullptr;
	delete application;
	application = nullptr;
}

QString configFolder()
{
	return session->configFolder();
}

bool isOwnFile(const char *path, int)
{
	const QString name = QString::fromUtf8(path);
	// Qt takes random numbers for itself.
	return isFontPath(path) || name.startsWith(configFolder()) || name == u"/dev/urandom";
}

FuzzDock *FuzzDock::made_ = nullptr;

FuzzDock &FuzzDock::fresh(bool visible)
{
	startHost();
	if (!made_) {
		made_ = new FuzzDock;
		if (visible) {
			made_->show();
		}
	}
	made_->reset();
	return *made_;
}

FuzzDock::FuzzDock()
{
	frontend().mainWindow = &window_;
	auto helper = std::make_unique<FakeRunner>();
	helper_ = helper.get();
	dock_ = new KestruneDock(&window_, {}, std::move(helper));
	window_.setCentralWidget(dock_);
	for (QToolButton *toggle : dock_->findChildren<QToolButton *>()) {
		toggle->setChecked(true);
	}
}

void FuzzDock::show()
{
	window_.resize(360, 720);
	// Painting all of it takes longer still; whoever wants that grabs the dock.
	window_.setAttribute(Qt::WA_DontShowOnScreen);
	window_.show();
	reset();
	// Here fonts are loaded, for which no text is to blame.
	dock_->grab();
	QToolTip::showText({}, u"tip"_s);
	width_px_ = neededWidth_px();
}

FuzzDock::~FuzzDock()
{
	delete dock_;
	settle();
}

// So that an input does the same whatever came before it, and a finding can be made again from its file alone. The
// account is linked and the chat command off: that is when most answers count.
void FuzzDock::reset()
{
	// Only here do timers run out.
	QCoreApplication::processEvents();
	frontend() = {};
	frontend().mainWindow = &window_;
	frontend().replayBufferActive = true;
	frontend().lastReplay = "/videos/replay.mkv";
	setCurrentDock(dock_);
	QToolTip::hideText();
	const OBSDataArrayAutoRelease none = obs_data_array_create();
	bindClipHotkey(none);
	invoke("refreshHotkeyUi");

	helper_->endAll();
	answer("--status", "refreshStatus",
	       line(u"status"_s, {{u"linked"_s, true},
				  {u"layouts"_s, keysOf(layoutTable)},
				  {u"styles"_s, keysOf(styleTable)},
				  {u"fonts"_s, keysOf(fontTable)}}),
	       true);
	answer("--chat-get", "loadChat", line(u"chat"_s, {{u"command"_s, u"!rune"_s}}), true);
	answer("--recent", "refreshRecent", line(u"recent"_s), true);
	answer("--preview", "refreshPreview", line(u"preview"_s), true);
	answer("--check-update", "checkUpdate", line(u"update"_s, {{u"update"_s, true}, {u"latest"_s, u"2"_s}}), true);
	helper_->endAll();
	settle();
}

void FuzzDock::invoke(const char *slot) const
{
	require(QMetaObject::invokeMethod(dock_, slot, Qt::DirectConnection), "the dock has this slot");
}

void FuzzDock::answer(const char *command, const char *slot, const QByteArray &output, bool ends) const
{
	const QString name = QString::fromLatin1(command);
	if (!helper_->runInFlight(name)) {
		invoke(slot);
		dock_->onReplaySaved();
	}
	const std::shared_ptr<FakeRunner::Run> run = helper_->runInFlight(name);
	if (!run) {
		return; // not now, says the dock
	}
	FakeRunner::answer(*run, output);
	if (ends) {
		helper_->end(run, 0);
	}
}

void FuzzDock::settle()
{
	QCoreApplication::sendPostedEvents();
	QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int FuzzDock::neededWidth_px() const
{
	const auto *content = dock_->findChild<QWidget *>(u"dockContent"_s);
	return qMax(window_.minimumSizeHint().width(), content->minimumSizeHint().width());
}

bool FuzzDock::isWidened() const
{
	return neededWidth_px() > width_px_;
}
