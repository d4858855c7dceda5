#pragma once

#include <QByteArray>
#include <QStringList>

/// A speech model for whisper.cpp, made here since real ones are too large to keep: it hears nothing and always says
/// the same words, which begin with the sound and end so many seconds after it. Word by word, blanks in front included.
QByteArray madeModel(const QStringList &words, double end_s);
