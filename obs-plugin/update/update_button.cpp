#include <QBoxLayout>
#include <QPushButton>

#include "dock/shown_text.hpp"
#include "dock/status_line.hpp"
#include "update/update_button.hpp"
#include "update/update_texts.hpp"

using namespace Qt::StringLiterals;

UpdateButton::UpdateButton(QBoxLayout *layout, StatusLine &status, StateCallback onStateChanged,
			   std::function<void()> onClicked)
	: status_(status)
	, onStateChanged_(std::move(onStateChanged))
	, button_(new QPushButton)
{
	button_->setObjectName(u"updateBtn"_s);
	button_->hide();
	button_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
	setUpdateButtonStyle(false);
	layout->addWidget(button_);
	connect(button_, &QPushButton::clicked, this, std::move(onClicked));
}

bool UpdateButton::isUnderWayOrDone() const
{
	return state_ == UpdateState::Downloading || state_ == UpdateState::Installing || state_ == UpdateState::Done;
}

void UpdateButton::setUpdateButtonStyle(bool error)
{
	const QString style = error ? u"QPushButton{background:#2a1418;color:#ff8a9a;border:1px solid #7a2a3a;"
				      "border-radius:6px;padding:4px;text-align:left}"_s
				    : u"QPushButton{background:#1d2a14;color:#b8ff6a;border:1px solid #4f7a2a;"
				      "border-radius:6px;padding:4px;text-align:left}"
				      "QPushButton:disabled{color:#b8ff6a}"_s;
	// Setting the same style sheet again is slow, and progress comes often.
	if (button_->styleSheet() != style) {
		button_->setStyleSheet(style);
	}
}

void UpdateButton::setUpdateState(UpdateState state, const QString &text)
{
	const QString shown = shownText(text);
	const bool isError = state == UpdateState::Error;
	state_ = state;
	setUpdateButtonStyle(isError);
	button_->setText(shown);
	button_->setToolTip(shownToolTip(text));
	button_->setVisible(true);
	button_->setEnabled(state == UpdateState::Available || isError);
	status_.setStatus(shown, isError);
	onStateChanged_(state, shown);
}

void UpdateButton::offerUpdate(const QString &notes)
{
	// Not through setUpdateState: an offer leaves the status line alone.
	const QString shown = shownText(availableText(latestVersion_));
	button_->setToolTip(shownToolTip(notes));
	state_ = UpdateState::Available;
	setUpdateButtonStyle(false);
	button_->setText(shown);
	button_->setEnabled(true);
	button_->setVisible(true);
	onStateChanged_(state_, shown);
}
