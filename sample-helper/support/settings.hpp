#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

/// The settings by their names, without the "KESTRUNE_SAMPLE_HELPER_" that the environment variables begin with.
namespace settings {
/// What a settings file says.
struct Content {
	QHash<QString, QString> values{};
	/// What is wrong with it, a sentence for each.
	QStringList problems{};
};

/// Reads the lines "NAME = value" of a settings file. The long names of the variables are understood, too; "~/" in
/// front of a value is the home folder, quotation marks around it are dropped; "#" or ";" begins a comment line.
Content parse(const QByteArray &file);

/// All names that there are.
QStringList names();

/// What is wrong with a value, as the end of a sentence that began with the name; empty if it may stand there.
QString complaint(const QString &name, const QString &value);
} // namespace settings
