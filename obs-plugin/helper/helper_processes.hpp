#pragma once

#include <QObject>

#include "helper/helper_runner.hpp"

/// The runner that starts a hidden process for each run.
class HelperProcesses : public QObject, public HelperRunner {
public:
	/// The processes become children of `dock`. `onFailure` gets the text for the user when the helper is missing,
	/// does not start, or stops without having said anything.
	HelperProcesses(QObject *dock, std::function<void(const QString &text)> onFailure);

	using HelperRunner::runHelper;
	bool runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish) override;
	bool isInstalled() const override;

private:
	QObject *dock_{nullptr};
	std::function<void(const QString &text)> onFailure_{};
};
