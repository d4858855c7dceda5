#include "clip/clip_button.hpp"

using namespace Qt::StringLiterals;

bool canClip(const ClipReadiness &readiness)
{
	return readiness.linked && readiness.replayBufferActive && !readiness.linking;
}

QString clipButtonToolTip(const ClipReadiness &readiness)
{
	if (!readiness.linked) {
		return u"Connect your Kestrune account first (Connect account below)."_s;
	}
	if (readiness.replayBufferActive) {
		return u"Save the last few seconds and turn them into a vertical Short."_s;
	}
	return u"The Replay Buffer isn't running. Kestrune starts it for you; "
	       "if it stays off, open Settings → OK or restart OBS once."_s;
}

ClipButton::ClipButton()
	: QPushButton(u"Clip that"_s)
{
	setObjectName(u"clipBtn"_s);
	setMinimumHeight(38);
	setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
	setStyleSheet(u"QPushButton{font-size:16px;font-weight:700;color:#05060a;border:0;border-radius:7px;"
		      "background:qlineargradient(x1:0,y1:0,x2:1,y2:0,stop:0 #00f0ff,stop:1 #ff2bd6);}"
		      "QPushButton:disabled{background:#333;color:#888}"_s);
}

void ClipButton::showReadiness(const ClipReadiness &readiness)
{
	setEnabled(canClip(readiness));
	setToolTip(clipButtonToolTip(readiness));
}
