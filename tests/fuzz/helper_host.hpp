#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include "cost.hpp"
#include "input.hpp"

#include <functional>

// What the targets of sample-helper/ share.

/// Gives the sample helper a state folder of its own, at the first call, and environment variables that leave it
/// without ffmpeg and without waiting.
void startHelperHost();

/// The helper's state folder; it exists.
QString stateFolder();

/// What a command said before it ended.
struct Answer {
	int exitCode{0};
	QByteArray output{};
	QList<QJsonObject> events{};
};

/// Runs a command as the helper's main function does, and takes what it writes to standard output. It is watched: it
/// writes in its own folders alone, opens regular files alone, and of others' only what `mayRead` allows.
Answer answerOf(const std::function<int()> &command, const std::function<bool(const char *path)> &mayRead);

/// The same for commands that read no files of others.
Answer answerOf(const std::function<int()> &command);
