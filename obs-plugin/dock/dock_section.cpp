#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFormLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "dock/dock_section.hpp"

QWidget *addSection(QBoxLayout *layout, const QString &title, const QString &objectName, QObject *dock)
{
	auto *toggle = new QToolButton;
	toggle->setObjectName(objectName + QStringLiteral("Toggle"));
	toggle->setText(title);
	toggle->setCheckable(true);
	toggle->setChecked(false);
	toggle->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
	toggle->setArrowType(Qt::RightArrow);
	toggle->setAutoRaise(true);
	toggle->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

	auto *body = new QWidget;
	body->setObjectName(objectName);
	body->hide();
	// With a widget Qt polishes its children, in one event. A body that is polished only when it is shown leaves
	// each of them an event of its own, and OBS's user interface is never held for the section as a whole.
	QCoreApplication::removePostedEvents(body, QEvent::PolishRequest);

	QObject::connect(toggle, &QToolButton::toggled, dock, [toggle, body](bool open) {
		toggle->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
		body->setVisible(open);
	});

	layout->addWidget(toggle, 0);
	layout->addWidget(body, 0);
	return body;
}

QFormLayout *sectionForm(QWidget *body)
{
	auto *form = new QFormLayout(body);
	form->setContentsMargins(6, 0, 0, 2);
	form->setVerticalSpacing(3);
	return form;
}

QVBoxLayout *sectionColumn(QWidget *body)
{
	auto *column = new QVBoxLayout(body);
	column->setContentsMargins(6, 0, 0, 2);
	column->setSpacing(3);
	return column;
}

QComboBox *addChoiceRow(QFormLayout *form, const QString &label, const QString &objectName)
{
	// If the box got its parent later, under a theme Qt would at once make the list that pops up from it.
	auto *box = new QComboBox(form->parentWidget());
	box->setObjectName(objectName);
	form->addRow(label, box);
	return box;
}
