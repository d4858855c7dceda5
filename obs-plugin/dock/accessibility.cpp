#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QShortcut>

#include "dock/kestrune_dock.hpp"

void KestruneDock::helpWithoutMouseAndSight()
{
	findChild<QScrollArea *>(QStringLiteral("dockScroll"))->setAccessibleName(QStringLiteral("Kestrune settings"));
	preview_->setAccessibleName(QStringLiteral("Preview"));
	recentList_->setAccessibleName(QStringLiteral("Recent clips"));

	chatState_->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
	chatState_->setFocusPolicy(Qt::NoFocus); // until there is a link

	// Not the list's itemActivated: a double click emits that as well, and would open the clip twice.
	for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
		auto *open = new QShortcut(key, recentList_);
		open->setContext(Qt::WidgetShortcut);
		open->setAutoRepeat(false);
		connect(open, &QShortcut::activated, this, [this] {
			if (const QListWidgetItem *item = recentList_->currentItem())
				openClip(item);
		});
	}
}
