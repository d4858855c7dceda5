#pragma once

class QBoxLayout;
class QFormLayout;
class QObject;
class QString;
class QVBoxLayout;
class QWidget;

/// Adds a collapsible section, collapsed at first, to `layout`: a header button with `title` and a body named
/// `objectName`, which is returned for the caller to fill. The header works as long as `dock` lives.
QWidget *addSection(QBoxLayout *layout, const QString &title, const QString &objectName, QObject *dock);

/// The layout of a section's body: indented a little, so that it reads as belonging to its header.
QFormLayout *sectionForm(QWidget *body);
QVBoxLayout *sectionColumn(QWidget *body);
