#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include "dock/choice_tables.hpp"
#include "dock/dock_section.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/long_text_label.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "module/dock_access.hpp"
#include "update/elevated_process.hpp"

#include <chrono>

using namespace std::chrono_literals;

KestruneDock::KestruneDock(QWidget *parent, const std::function<void(QWidget *)> &embed)
	: QWidget(parent)
	, installerTimer_(new QTimer(this))
{
	setObjectName(QStringLiteral("KestruneDock"));
	if (embed)
		embed(this);

	auto *mainLayout = new QVBoxLayout(this);
	mainLayout->setContentsMargins(4, 4, 4, 4);
	mainLayout->setSpacing(4);

	buildHeader(mainLayout);
	QVBoxLayout *content = buildScrollArea(mainLayout);
	buildAccountRow(content);
	buildClipLength(content);
	buildStyleSection(content);
	buildHotkeySection(content);
	buildChatSection(content);
	buildRecentSection(content);
	content->addStretch(1);
	helpWithoutMouseAndSight();

	installerTimer_->setInterval(500ms);
	connect(installerTimer_, &QTimer::timeout, this, &KestruneDock::pollInstaller);

	connectWidgets();
	startWork();
}

KestruneDock::~KestruneDock()
{
	forgetDock(this);
	silenceRuns();
}

void KestruneDock::buildHeader(QVBoxLayout *mainLayout)
{
	clipButton_ = new QPushButton(QStringLiteral("Clip that"));
	clipButton_->setObjectName(QStringLiteral("clipBtn"));
	clipButton_->setMinimumHeight(38);
	clipButton_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
	mainLayout->addWidget(clipButton_);
	clipButton_->setStyleSheet(
		QStringLiteral("QPushButton{font-size:16px;font-weight:700;color:#05060a;border:0;border-radius:7px;"
			       "background:qlineargradient(x1:0,y1:0,x2:1,y2:0,stop:0 #00f0ff,stop:1 #ff2bd6);}"
			       "QPushButton:disabled{background:#333;color:#888}"));

	status_ = new LongTextLabel;
	status_->setObjectName(QStringLiteral("status"));
	status_->setWordWrap(true);
	mainLayout->addWidget(status_);
	setStatus(QStringLiteral("Starting…"), false);

	updateButton_ = new QPushButton;
	updateButton_->setObjectName(QStringLiteral("updateBtn"));
	updateButton_->hide();
	updateButton_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
	mainLayout->addWidget(updateButton_);
	setUpdateButtonStyle(false);
	connect(updateButton_, &QPushButton::clicked, this, &KestruneDock::installUpdate);
}

QVBoxLayout *KestruneDock::buildScrollArea(QVBoxLayout *mainLayout)
{
	auto *scrollArea = new QScrollArea(this);
	scrollArea->setObjectName(QStringLiteral("dockScroll"));
	scrollArea->setWidgetResizable(true);
	scrollArea->setFrameShape(QFrame::NoFrame);
	scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
	scrollArea->setMinimumHeight(60);

	auto *contentWidget = new QWidget;
	contentWidget->setObjectName(QStringLiteral("dockContent"));
	auto *content = new QVBoxLayout(contentWidget);
	content->setContentsMargins(0, 0, 0, 0);
	content->setSpacing(4);

	scrollArea->setWidget(contentWidget);
	mainLayout->addWidget(scrollArea, 1);
	setMinimumHeight(200);
	return content;
}

void KestruneDock::buildAccountRow(QVBoxLayout *content)
{
	auto *row = new QHBoxLayout;
	row->setSpacing(4);
	accountLabel_ = new LongTextLabel(QStringLiteral("Not connected"));
	accountLabel_->setWordWrap(true);
	row->addWidget(accountLabel_, 1);
	connectButton_ = new QPushButton(QStringLiteral("Connect account"));
	row->addWidget(connectButton_, 0);
	content->addLayout(row);
}

void KestruneDock::buildClipLength(QVBoxLayout *content)
{
	auto *form = new QFormLayout;
	form->setContentsMargins(0, 0, 0, 0);
	form->setVerticalSpacing(3);
	content->addLayout(form);

	secondsBox_ = addChoiceRow(form, QStringLiteral("Clip length"), QStringLiteral("seconds"));
}

void KestruneDock::connectWidgets()
{
	connect(connectButton_, &QPushButton::clicked, this, &KestruneDock::connectAccount);
	connect(clipButton_, &QPushButton::clicked, this, &KestruneDock::clipThat);
	connect(openFolderButton_, &QPushButton::clicked, this, &KestruneDock::openFolder);
	connect(recentList_, &QListWidget::itemDoubleClicked, this, &KestruneDock::openClip);

	// "activated" comes from the user alone: entries that code fills or selects are neither saved nor previewed.
	for (const QComboBox *box : {secondsBox_, layoutBox_, styleBox_, fontBox_, positionBox_})
		connect(box, &QComboBox::activated, this, &KestruneDock::savePrefs);
	for (const QComboBox *box : {layoutBox_, styleBox_, fontBox_, positionBox_})
		connect(box, &QComboBox::activated, this, &KestruneDock::onChoiceChanged);
}

void KestruneDock::startWork()
{
	// With its first entry, at the latest with its first polish, a box gets the list that pops up from it: nine
	// widgets that Qt matches against the application's style sheet. Under OBS's theme that takes as long as the
	// rest of the dock, so it is left to the events that OBS runs once all modules are loaded, before it shows its
	// window.
	if (qApp->styleSheet().isEmpty())
		startChoices();
	else
		QMetaObject::invokeMethod(this, &KestruneDock::startChoices, Qt::QueuedConnection);

	previewTimer_->start(2500ms);
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

void KestruneDock::startChoices()
{
	for (const int length_s : clipLengths_s)
		secondsBox_->addItem(QStringLiteral("Last %1 s").arg(length_s), length_s);
	secondsBox_->setCurrentIndex(secondsBox_->findData(defaultClipLength_s));
	fillChoices(layoutBox_, layoutTable);
	fillChoices(styleBox_, styleTable);
	fillChoices(fontBox_, fontTable);
	fillChoices(positionBox_, positionTable);
	loadPrefs();
	decorateChoices();
}

void KestruneDock::setStatus(const QString &text, bool error)
{
	status_->setText(text);
	const QString style = error ? QStringLiteral("color:#ff6b81") : QStringLiteral("color:#8a90a6");
	// Qt takes its time over a style sheet even when it is the one that is set.
	if (status_->styleSheet() != style)
		status_->setStyleSheet(style);
}
