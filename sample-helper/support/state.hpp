#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

/// Small files that outlive a run. Runs may overlap: files are replaced whole, so readers always find a complete one,
/// and changed under a lock, so that no run undoes another's change.
///
/// A file that is damaged or larger than files::maxSmallFile_bytes is never overwritten: it is renamed to
/// "NAME.damaged-TIME", and the log says so.
namespace state {
/// Returns the JSON file `name` from the state folder; empty if it is missing or unusable.
QJsonObject read(const QString &name);

/// Reads the JSON file `name`, applies `change` and stores the result if it differs. Returns what is stored now. Throws
/// Failure and leaves the file as it was.
QJsonObject update(const QString &name, const std::function<void(QJsonObject &)> &change);

/// Stores a page for the browser in the state folder; returns its "file:" address. Throws Failure.
QString writePage(const QString &name, const QString &title, const QString &text);
} // namespace state
