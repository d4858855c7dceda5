#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDockWidget>
#include <QJsonArray>
#include <QLabel>
#include <QListWidget>
#include <QPixmap>
#include <QWidget>

#include "dock_snapshot.hpp"

#include <obs-frontend-api.h>

namespace {
/// Adds the screen position of `rectangle`, a part of the widget.
void addGeometry(QJsonObject &object, const QWidget &widget, const QRect &rectangle)
{
	const QPoint corner = widget.mapToGlobal(rectangle.topLeft());
	object["x"] = corner.x();
	object["y"] = corner.y();
	object["width"] = rectangle.width();
	object["height"] = rectangle.height();
}

void addGeometry(QJsonObject &object, const QWidget &widget)
{
	addGeometry(object, widget, widget.rect());
}

/// Whether a click on the widget's centre reaches it: not scrolled away, not covered by a window.
bool takesClicks(const QWidget &widget)
{
	const QWidget *hit = QApplication::widgetAt(widget.mapToGlobal(widget.rect().center()));
	return hit && (hit == &widget || widget.isAncestorOf(hit));
}

/// The entries, with their screen positions while the list is open.
QJsonArray comboBoxItems(const QComboBox &box)
{
	const QAbstractItemView &list = *box.view();
	QJsonArray items;
	for (int index = 0; index < box.count(); ++index) {
		QJsonObject item{{"text", box.itemText(index)}, {"data", box.itemData(index).toString()}};
		if (list.isVisible()) {
			const QModelIndex entry = box.model()->index(index, box.modelColumn());
			addGeometry(item, *list.viewport(), list.visualRect(entry));
		}
		items.append(item);
	}
	return items;
}

QJsonArray listItems(const QListWidget &list)
{
	QJsonArray items;
	for (int row = 0; row < list.count(); ++row) {
		items.append(QJsonObject{{"text", list.item(row)->text()}, {"toolTip", list.item(row)->toolTip()}});
	}
	return items;
}

/// The picture's size and a hash.
QJsonObject describe(const QPixmap &picture)
{
	const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
	const QByteArrayView pixels(image.constBits(), image.sizeInBytes());
	const QByteArray hash = QCryptographicHash::hash(pixels, QCryptographicHash::Sha1);
	return {{"width", image.width()}, {"height", image.height()}, {"hash", QString::fromLatin1(hash.toHex())}};
}

QJsonObject describe(const QWidget &widget)
{
	QJsonObject object{
		{"class", widget.metaObject()->className()},
		{"name", widget.objectName()},
		{"text", widget.property("text").toString()},
		{"toolTip", widget.toolTip()},
		{"styleSheet", widget.styleSheet()},
		{"visible", widget.isVisible()},
		{"enabled", widget.isEnabled()},
		{"checked", widget.property("checked").toBool()},
		{"takesClicks", takesClicks(widget)},
	};
	addGeometry(object, widget);
	if (const auto *box = qobject_cast<const QComboBox *>(&widget)) {
		object["items"] = comboBoxItems(*box);
		object["current"] = box->currentText();
		object["open"] = box->view()->isVisible();
	} else if (const auto *list = qobject_cast<const QListWidget *>(&widget)) {
		object["items"] = listItems(*list);
	} else if (const auto *label = qobject_cast<const QLabel *>(&widget); label && !label->pixmap().isNull()) {
		object["picture"] = describe(label->pixmap());
	}
	return object;
}
} // namespace

QJsonObject dockSnapshot(const QString &widgetName)
{
	const auto *window = static_cast<QWidget *>(obs_frontend_get_main_window());
	const auto *dock = window ? window->findChild<QWidget *>("KestruneDock") : nullptr;
	if (!dock) {
		return {{"found", false}};
	}
	const auto *frame = qobject_cast<const QDockWidget *>(dock->parentWidget());
	QJsonArray widgets;
	for (const QWidget *widget : dock->findChildren<QWidget *>(widgetName)) {
		widgets.append(describe(*widget));
	}
	QJsonObject snapshot{
		{"found", true},
		{"id", frame ? frame->objectName() : QString()},
		{"title", frame ? frame->windowTitle() : QString()},
		{"docked", frame && !frame->isFloating()},
		{"visible", dock->isVisible()},
		{"widgets", widgets},
	};
	addGeometry(snapshot, *dock);
	return snapshot;
}
