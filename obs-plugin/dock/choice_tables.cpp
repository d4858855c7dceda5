#include <QComboBox>

#include "dock/choice_tables.hpp"
#include "dock/shown_text.hpp"

#include <algorithm>

QString displayName(ChoiceTable table, const QString &key)
{
	const auto row = std::find_if(table.begin(), table.end(),
				      [&key](const Choice &choice) { return key == QUtf8StringView(choice.key); });
	return row == table.end() ? key : QString::fromUtf8(row->displayName);
}

void fillChoices(QComboBox *box, ChoiceTable table)
{
	box->clear();
	for (const Choice &choice : table) {
		box->addItem(QString::fromUtf8(choice.displayName), QString::fromUtf8(choice.key));
	}
	box->setCurrentIndex(0);
}

void refillChoices(QComboBox *box, ChoiceTable table, const QStringList &keys, const QString &desiredKey)
{
	if (keys.isEmpty()) {
		return;
	}

	const QString previousKey = currentKey(box);
	box->clear();
	for (const QString &key : keys) {
		box->addItem(shownText(displayName(table, key)), key);
	}
	box->setCurrentIndex(0);
	selectByKey(box, desiredKey.isEmpty() ? previousKey : desiredKey);
}

void selectByKey(QComboBox *box, const QString &key)
{
	if (key.isEmpty()) {
		return;
	}

	const int index = box->findData(key);
	if (index >= 0) {
		box->setCurrentIndex(index);
	}
}

QString currentKey(const QComboBox *box)
{
	return box->currentData().toString();
}
