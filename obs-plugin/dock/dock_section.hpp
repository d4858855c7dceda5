#pragma once

class QBoxLayout;
class QFormLayout;
class QObject;
class QString;
class QVBoxLayout;
class QWidget;

/// Adds a collapsed section to `layout`: a header button with `title`, and a body named `objectName`, which is returned
/// for the caller to fill. `dock` is the context of the header's connection.
QWidget *addSection(QBoxLayout *layout, const QString &title, const QString &objectName, QObject *dock);

/// The layout of a section's body, indented under the header.
QFormLayout *sectionForm(QWidget *body);
QVBoxLayout *sectionColumn(QWidget *body);
