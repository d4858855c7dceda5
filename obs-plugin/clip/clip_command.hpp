#pragma once

#include <QString>
#include <QStringList>

class QJsonObject;

/// What the user chose for a Short, as the helper understands it.
struct ClipChoices {
	int length_s{0};
	QString layout{};
	QString style{};
	QString font{};
	QString captionPosition{};
};

/// The helper's arguments for making a Short of the saved replay at `replayPath`.
QStringList processArguments(const QString &replayPath, const ClipChoices &choices);

/// The status line for a Short that the helper reports as ready ("done").
QString readyText(const QJsonObject &done);

/// The status line while OBS saves the replay; `lengthText` is the clip length as its box shows it ("Last 60 s").
QString savingText(const QString &lengthText);
