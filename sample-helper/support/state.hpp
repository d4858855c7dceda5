#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

/// The small files that outlive a run. Runs may overlap: every file is replaced whole, so a reader always finds a
/// complete one, and a change is made under a lock, so that no run undoes what another one has just written.
///
/// A file that cannot be understood or is larger than files::largestSmallFile_bytes is never overwritten: it is kept
/// beside as "NAME.damaged-TIME", and the log says so.
namespace state {

/// The content of the JSON file `name` in the state folder; empty if there is none or it cannot be used.
QJsonObject read(const QString &name);

/// Reads the JSON file `name`, lets `change` edit it and stores the result if it is another; returns what is stored
/// now. Throws Failure, and then the file is as it was before.
QJsonObject update(const QString &name, const std::function<void(QJsonObject &)> &change);

/// Stores a page for the browser in the state folder; returns its address, which begins with "file:". Throws Failure.
QString writePage(const QString &name, const QString &title, const QString &text);

} // namespace state
