#pragma once

#include <QString>
#include <QStringList>

class QCommandLineParser;

/// The choices that decide how a Short looks; each member holds a key.
struct Look {
	QString layout{};
	QString style{};
	QString font{};
	QString position{};
};

/// The choices of the last clip, or the first entry of each table.
Look storedLook();

/// Remembers the choices for later runs that do not name any. Throws Failure.
void storeLook(const Look &look);

/// The choices on the command line; those that are missing come from storedLook(). A key that is not known is replaced
/// by the first of its table and mentioned in `notes`: a clip in another look is worth more than none.
Look requestedLook(const QCommandLineParser &parser, QStringList &notes);
