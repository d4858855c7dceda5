#pragma once

#include <QStringList>

#include "sandbox.hpp"

/// The dock's arguments; `look` holds further options.
QStringList processArguments(const QString &replay, int length_s, const QStringList &look = {});

QStringList lookArguments(const char *layout, const char *style);

/// Path of the Short that a run made; empty if none.
QString shortPath(const Run &run);

QString eventName(const Run &run);

QString note(const Run &run);

/// Links an account; without one, every Short's event carries a note.
void linkAccount(const Sandbox &sandbox);
