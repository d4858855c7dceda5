#pragma once

#include <QObject>

#include "helper/helper_runner.hpp"

/// Starts a hidden process for each run.
class HelperProcesses : public QObject, public HelperRunner {
public:
	/// The processes become children of `dock`. `onFailure` gets a text for the user if the helper is missing, does
	/// not start, or ends without any event.
	HelperProcesses(QObject *dock, std::function<void(const QString &text)> onFailure);

	bool runHelper(const QStringList &arguments, EventCallback onEvent, FinishCallback onFinish) override;
	bool isInstalled() const override;

private:
	QObject *dock_{nullptr};
	std::function<void(const QString &text)> onFailure_{};
};
