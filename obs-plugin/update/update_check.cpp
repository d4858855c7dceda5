#include <QFileInfo>
#include <QPushButton>

#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"
#include "helper/helper_locator.hpp"
#include "update/update_texts.hpp"

#include <memory>

namespace {
/// No check and no click may disturb an update under way, and a finished one is final until OBS restarts.
bool updateUnderWayOrDone(const QString &state)
{
	return state == u"downloading" || state == u"installing" || state == u"done";
}
} // namespace

void KestruneDock::setUpdateButtonStyle(bool error)
{
	const QString style =
		error ? QStringLiteral("QPushButton{background:#2a1418;color:#ff8a9a;border:1px solid #7a2a3a;"
				       "border-radius:6px;padding:4px;text-align:left}")
		      : QStringLiteral("QPushButton{background:#1d2a14;color:#b8ff6a;border:1px solid #4f7a2a;"
				       "border-radius:6px;padding:4px;text-align:left}"
				       "QPushButton:disabled{color:#b8ff6a}");
	// As on the status line: a download reports its progress often.
	if (updateButton_->styleSheet() != style)
		updateButton_->setStyleSheet(style);
}

void KestruneDock::setUpdateState(const QString &state, const QString &text)
{
	updateState_ = state;
	const bool isError = state == u"error";
	setUpdateButtonStyle(isError);
	updateButton_->setText(shownText(text));
	updateButton_->setToolTip(shownText(text));
	updateButton_->setVisible(true);
	updateButton_->setEnabled(state == u"available" || isError);
	setStatus(text, isError);
	Q_EMIT updateStateChanged(state, text);
}

void KestruneDock::checkUpdate()
{
	if (!QFileInfo::exists(locateHelper()) || updateUnderWayOrDone(updateState_))
		return;

	runHelper({QStringLiteral("--check-update")}, [this](const QJsonObject &event) { onUpdateCheckEvent(event); },
		  {});
}

void KestruneDock::onUpdateCheckEvent(const QJsonObject &event)
{
	if (event[u"event"].toString() != u"update" || !event[u"update"].toBool())
		return;

	// Not through setUpdateState: an offer leaves the status line alone, and its tool tip is the release notes.
	latestVersion_ = event[u"latest"].toString();
	updateButton_->setToolTip(shownText(event[u"notes"].toString()));
	updateState_ = QStringLiteral("available");
	setUpdateButtonStyle(false);
	updateButton_->setText(shownText(availableText(latestVersion_)));
	updateButton_->setEnabled(true);
	updateButton_->setVisible(true);
	Q_EMIT updateStateChanged(QStringLiteral("available"), availableText(latestVersion_));
}

void KestruneDock::installUpdate()
{
	if (updateUnderWayOrDone(updateState_))
		return;

	setUpdateState(QStringLiteral("downloading"), downloadingText(latestVersion_, 0));
	// Set by the event that decides the download; the end of a run without one is a failure of its own.
	const auto settled = std::make_shared<bool>(false);
	const QProcess *download = runHelper(
		{QStringLiteral("--download-update")},
		[this, settled](const QJsonObject &event) { onDownloadEvent(event, *settled); },
		[this, settled](int exitCode) {
			if (!*settled && updateState_ == u"downloading")
				setUpdateState(QStringLiteral("error"), downloadHelperStoppedText(exitCode));
		});
	if (!download)
		setUpdateState(QStringLiteral("error"), downloadHelperMissingText());
}

void KestruneDock::onDownloadEvent(const QJsonObject &event, bool &settled)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"progress" && event[u"phase"].toString() == u"download") {
		setUpdateState(QStringLiteral("downloading"),
			       downloadingText(latestVersion_, event[u"percent"].toInt()));
	} else if (kind == u"downloaded") {
		settled = true;
		const QString version = event[u"latest"].toString();
		if (!version.isEmpty())
			latestVersion_ = version;
		runInstaller(event[u"path"].toString());
	} else if (kind == u"update" && !event[u"update"].toBool()) {
		settled = true;
		setUpdateState(QStringLiteral("error"), noNewerVersionText());
	} else if (kind == u"error") {
		settled = true;
		setUpdateState(QStringLiteral("error"), downloadFailedText(event[u"error"].toString()));
	}
}
