#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include "clip/clip_button.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/status_line.hpp"
#include "helper/helper_processes.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// As the signal names it.
QString updateStateName(UpdateState state)
{
	switch (state) {
	case UpdateState::None:
		return {};
	case UpdateState::Available:
		return u"available"_s;
	case UpdateState::Downloading:
		return u"downloading"_s;
	case UpdateState::Installing:
		return u"installing"_s;
	case UpdateState::Done:
		return u"done"_s;
	case UpdateState::Error:
		return u"error"_s;
	}
	return {};
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
		[this](UpdateState state, const QString &text) {
			Q_EMIT updateStateChanged(updateStateName(state), text);
		},
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
	// A hotkey capture looks for key presses.
	return (hotkey_ && hotkey_->filterEvent(watched, event)) || QWidget::eventFilter(watched, event);
}
