#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <functional>

/// The small files that outlive a run. Runs may overlap: every file is replaced whole, so a reader always finds a
/// complete one, and a change is made under a lock, so that no run undoes what another one has just written.
namespace state {

/// Makes a folder with its parents if it is missing. Throws Failure.
void makeFolder(const QString &path);

/// Writes or replaces a file. Throws Failure.
void writeFile(const QString &path, const QByteArray &content);

/// The content of the JSON file `name` in the state folder; empty if there is none or it cannot be understood.
QJsonObject read(const QString &name);

/// Reads the JSON file `name`, lets `change` edit it and stores the result; returns what was stored. Throws Failure.
QJsonObject update(const QString &name, const std::function<void(QJsonObject &)> &change);

/// Stores a page for the browser in the state folder; returns its address, which begins with "file:". Throws Failure.
QString writePage(const QString &name, const QString &title, const QString &text);

} // namespace state
