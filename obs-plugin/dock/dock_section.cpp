#include <QFormLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "dock/dock_section.hpp"

using namespace Qt::StringLiterals;

QWidget *addSection(QBoxLayout *layout, const QString &title, const QString &objectName, QObject *dock)
{
	auto *toggle = new QToolButton;
	toggle->setObjectName(objectName + u"Toggle"_s);
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
