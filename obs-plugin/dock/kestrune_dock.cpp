#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include "chat/chat_section.hpp"
#include "clip/account.hpp"
#include "clip/clip_button.hpp"
#include "clip/clip_flow.hpp"
#include "clip/helper_status.hpp"
#include "clip/replay_buffer.hpp"
#include "dock/choices_section.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/recent_section.hpp"
#include "dock/status_line.hpp"
#include "helper/helper_processes.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_section.hpp"
#include "module/dock_access.hpp"
#include "update/installer.hpp"
#include "update/update_button.hpp"
#include "update/updater.hpp"

#include <chrono>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// Calls `function` of `part`; does nothing while OBS takes the dock, before there are parts.
template<typename Part, typename Function, typename... Arguments>
void callPart(const std::unique_ptr<Part> &part, Function function, Arguments... arguments)
{
	if (part) {
		std::invoke(function, *part, arguments...);
	}
}
} // namespace

KestruneDock::KestruneDock(QWidget *parent, const std::function<bool(QWidget *dock)> &handOver,
			   std::unique_ptr<HelperRunner> helper)
	: QWidget(parent)
	, helper_(helper ? std::move(helper) : std::make_unique<HelperProcesses>(this, [this](const QString &failure) {
		status_->setStatus(failure, true);
	}))
{
	setObjectName(u"KestruneDock"_s);
	if (handOver && !handOver(this)) {
		return;
	}

	auto *mainLayout = new QVBoxLayout(this);
	mainLayout->setContentsMargins(4, 4, 4, 4);
	mainLayout->setSpacing(4);

	buildHeader(mainLayout);
	buildParts(buildScrollArea(mainLayout));
	startWork();
}

KestruneDock::~KestruneDock()
{
	forgetDock(this);
}

void KestruneDock::buildHeader(QVBoxLayout *mainLayout)
{
	clipButton_ = new ClipButton;
	mainLayout->addWidget(clipButton_);
	connect(clipButton_, &ClipButton::clicked, this, &KestruneDock::clipThat);

	status_ = new StatusLine;
	mainLayout->addWidget(status_);
	updateButton_ = std::make_unique<UpdateButton>(
		mainLayout, *status_,
		[this](const QString &state, const QString &text) { Q_EMIT updateStateChanged(state, text); },
		[this] { installUpdate(); });
}

QVBoxLayout *KestruneDock::buildScrollArea(QVBoxLayout *mainLayout)
{
	auto *scrollArea = new QScrollArea(this);
	scrollArea->setObjectName(u"dockScroll"_s);
	scrollArea->setAccessibleName(u"Kestrune settings"_s);
	scrollArea->setWidgetResizable(true);
	scrollArea->setFrameShape(QFrame::NoFrame);
	scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
	scrollArea->setMinimumHeight(60);

	auto *contentWidget = new QWidget;
	contentWidget->setObjectName(u"dockContent"_s);
	auto *content = new QVBoxLayout(contentWidget);
	content->setContentsMargins(0, 0, 0, 0);
	content->setSpacing(4);

	scrollArea->setWidget(contentWidget);
	mainLayout->addWidget(scrollArea, 1);
	setMinimumHeight(200);
	return content;
}

void KestruneDock::buildParts(QVBoxLayout *content)
{
	account_ = std::make_unique<Account>(
		content, *helper_, *status_, [this] { updateClipButton(); }, [this] { refreshStatus(); });
	choices_ = std::make_unique<ChoicesSection>(content, this, *helper_);
	hotkey_ = std::make_unique<HotkeySection>(content, this, *status_);
	chat_ = std::make_unique<ChatSection>(content, this, *helper_, *account_,
					      [this](const QString &name) { clips_->clipFromChat(name); });
	recent_ = std::make_unique<RecentSection>(content, this, *helper_);
	content->addStretch(1);

	installer_ = std::make_unique<Installer>(this, *updateButton_);
	updater_ = std::make_unique<Updater>(*helper_, *updateButton_, *installer_);
	replayBuffer_ = std::make_unique<ReplayBuffer>(*status_, *account_, [this] { updateClipButton(); });
	clips_ = std::make_unique<ClipFlow>(
		*helper_, ClipFlow::Parts{*clipButton_, *status_, *account_, *replayBuffer_, *choices_, *recent_},
		[this] { refreshStatus(); });
	helperStatus_ = std::make_unique<HelperStatus>(
		*helper_, HelperStatus::Parts{*status_, *account_, *choices_, *chat_, *replayBuffer_},
		[this] { updateClipButton(); });
}

void KestruneDock::startWork()
{
	choices_->loadPrefs();
	decorateChoices();
	choices_->startFirstPreview();
	loadHotkeyFromSettings();
	refreshHotkeyUi();
	updateClipButton();

	auto *clipButtonTimer = new QTimer(this);
	connect(clipButtonTimer, &QTimer::timeout, this, &KestruneDock::updateClipButton);
	clipButtonTimer->start(2s);

	QTimer::singleShot(1500ms, this, &KestruneDock::refreshStatus);
	QTimer::singleShot(2s, this, &KestruneDock::refreshRecent);
	QTimer::singleShot(8s, this, &KestruneDock::checkUpdate);

	auto *updateTimer = new QTimer(this);
	connect(updateTimer, &QTimer::timeout, this, &KestruneDock::checkUpdate);
	updateTimer->start(6h);
}

bool KestruneDock::eventFilter(QObject *watched, QEvent *event)
{
	return (hotkey_ && hotkey_->filterEvent(watched, event)) || QWidget::eventFilter(watched, event);
}

void KestruneDock::onReplaySaved()
{
	callPart(clips_, &ClipFlow::onReplaySaved);
}

void KestruneDock::onReplayBufferStarted()
{
	callPart(replayBuffer_, &ReplayBuffer::onStarted);
}

void KestruneDock::onReplayBufferStopped()
{
	callPart(replayBuffer_, &ReplayBuffer::onStopped);
}

void KestruneDock::clipThat()
{
	callPart(clips_, &ClipFlow::clipThat);
}

void KestruneDock::refreshStatus()
{
	callPart(helperStatus_, &HelperStatus::refreshStatus);
}

void KestruneDock::refreshRecent()
{
	callPart(recent_, &RecentSection::refreshRecent);
}

void KestruneDock::updateClipButton()
{
	callPart(clips_, &ClipFlow::updateClipButton);
}

void KestruneDock::checkUpdate()
{
	callPart(updater_, &Updater::checkUpdate);
}

void KestruneDock::installUpdate()
{
	callPart(updater_, &Updater::installUpdate);
}

void KestruneDock::startHotkeyCapture()
{
	callPart(hotkey_, &HotkeySection::startHotkeyCapture);
}

void KestruneDock::refreshPreview()
{
	callPart(choices_, &ChoicesSection::refreshPreview);
}

void KestruneDock::loadChat()
{
	callPart(chat_, &ChatSection::loadChat);
}

void KestruneDock::saveChat()
{
	callPart(chat_, &ChatSection::saveChat);
}

void KestruneDock::pollTriggers()
{
	callPart(chat_, &ChatSection::pollTriggers);
}

void KestruneDock::decorateChoices()
{
	callPart(choices_, &ChoicesSection::decorateChoices);
}

void KestruneDock::refreshHotkeyUi()
{
	callPart(hotkey_, &HotkeySection::refreshHotkeyUi);
}

void KestruneDock::runInstaller(const QString &installerPath)
{
	callPart(installer_, &Installer::runInstaller, installerPath);
}

void KestruneDock::installerFinished(int exitCode)
{
	callPart(installer_, &Installer::installerFinished, exitCode);
}

void KestruneDock::pollInstaller()
{
	callPart(installer_, &Installer::pollInstaller);
}

void KestruneDock::connectAccount()
{
	callPart(account_, &Account::connectAccount);
}

void KestruneDock::openFolder()
{
	callPart(recent_, &RecentSection::openFolder);
}

void KestruneDock::savePrefs()
{
	callPart(choices_, &ChoicesSection::savePrefs);
}
