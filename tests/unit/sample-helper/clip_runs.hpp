#pragma once

#include <QStringList>

#include "sandbox.hpp"

/// Runs of --process and what they answer.

/// The arguments as the dock sends them; `look` are further switches.
QStringList processArguments(const QString &replay, int length_s, const QStringList &look = {});

/// The switches of a layout and a caption style.
QStringList lookArguments(const char *layout, const char *style);

/// The path of the Short that a run has made; empty without one.
QString shortPath(const Run &run);

QString eventName(const Run &run);

QString note(const Run &run);

/// Links an account, so that a Short has no note of its own.
void linkAccount(const Sandbox &sandbox);
