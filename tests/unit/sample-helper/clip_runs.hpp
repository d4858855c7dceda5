#pragma once

#include "sandbox.hpp"

#include <QStringList>

/// Runs of --process and what they answer.

/// The arguments as the dock sends them; `look` are further switches.
QStringList process(const QString &replay, int length_s, const QStringList &look = {});

/// The switches of a layout and a caption style.
QStringList looking(const char *layout, const char *style);

/// The path of the Short that a run has made; empty without one.
QString formatted(const Run &run);

QString eventName(const Run &run);

QString note(const Run &run);

/// Links an account, so that a Short has no note of its own.
void link(const Sandbox &sandbox);
