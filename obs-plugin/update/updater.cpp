#include <QJsonObject>

#include "helper/helper_runner.hpp"
#include "update/installer.hpp"
#include "update/update_button.hpp"
#include "update/update_texts.hpp"
#include "update/updater.hpp"

#include <memory>

using namespace Qt::StringLiterals;

Updater::Updater(HelperRunner &helper, UpdateButton &button, Installer &installer)
	: helper_(helper)
	, button_(button)
	, installer_(installer)
{
}

void Updater::checkUpdate()
{
	if (!helper_.isInstalled() || button_.isUnderWayOrDone()) {
		return;
	}
	helper_.ask({u"--check-update"_s}, u"update"_s, [this](const QJsonObject &update) {
		if (update[u"update"].toBool()) {
			button_.setLatestVersion(update[u"latest"].toString());
			button_.offerUpdate(update[u"notes"].toString());
		}
	});
}

void Updater::installUpdate()
{
	if (button_.isUnderWayOrDone()) {
		return;
	}

	button_.setUpdateState(UpdateState::Downloading, downloadingText(button_.latestVersion(), 0));
	const auto settled = std::make_shared<bool>(false);
	const bool started = helper_.runHelper(
		{u"--download-update"_s},
		[this, settled](const QJsonObject &event) { onDownloadEvent(event, *settled); },
		[this, settled](int exitCode) { onDownloadFinished(exitCode, *settled); });
	if (!started) {
		button_.setUpdateState(UpdateState::Error, downloadHelperMissingText());
	}
}

void Updater::onDownloadEvent(const QJsonObject &event, bool &settled)
{
	const QString kind = event[u"event"].toString();
	if (kind == u"progress" && event[u"phase"].toString() == u"download") {
		button_.setUpdateState(UpdateState::Downloading,
				       downloadingText(button_.latestVersion(), event[u"percent"].toInt()));
	} else if (kind == u"downloaded") {
		settled = true;
		const QString version = event[u"latest"].toString();
		if (!version.isEmpty()) {
			button_.setLatestVersion(version);
		}
		installer_.runInstaller(event[u"path"].toString());
	} else if (kind == u"update" && !event[u"update"].toBool()) {
		settled = true;
		button_.setUpdateState(UpdateState::Error, noNewerVersionText());
	} else if (kind == u"error") {
		settled = true;
		button_.setUpdateState(UpdateState::Error, downloadFailedText(event[u"error"].toString()));
	}
}

void Updater::onDownloadFinished(int exitCode, bool settled)
{
	if (!settled && button_.state() == UpdateState::Downloading) {
		button_.setUpdateState(UpdateState::Error, downloadHelperStoppedText(exitCode));
	}
}
