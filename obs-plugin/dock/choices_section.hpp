#pragma once

#include <QObject>

#include "dock/clip_choices.hpp"

class HelperRunner;
class PreviewLabel;
class QBoxLayout;
class QComboBox;
class QFormLayout;
class QJsonObject;
class QTimer;

/// What the user chooses for a Short: the clip length, and in the section "Layout & captions" the layout and the
/// captions, with a preview. Each entry of a box carries its key (or its length in seconds) as user-role data.
class ChoicesSection : public QObject {
public:
	ChoicesSection(QBoxLayout *content, QObject *dock, HelperRunner &helper);

	/// What is chosen now.
	ClipChoices choices() const;

	/// Selects what the preferences file holds.
	void loadPrefs();
	/// Stores what is chosen now in the preferences file.
	void savePrefs();

	/// Refills the boxes from the lists of a "status" event; the user's own choices win over the helper's.
	void refill(const QJsonObject &status);
	/// Offers "None" as a style, says whether captions have a position, and shows fonts in their own face.
	void decorateChoices();

	/// Asks the helper for the first preview, in a moment.
	void startFirstPreview();
	/// Asks the helper for a picture of what is chosen, if there is a helper.
	void refreshPreview();

private:
	void buildClipLength(QBoxLayout *content);
	void buildCaptions(QFormLayout *form);
	void connectBoxes();
	void onChoiceChanged();

	HelperRunner &helper_;
	QComboBox *lengthBox_{nullptr};
	QComboBox *layoutBox_{nullptr};
	QComboBox *styleBox_{nullptr};
	QComboBox *fontBox_{nullptr};
	QComboBox *positionBox_{nullptr};
	PreviewLabel *preview_{nullptr};
	QTimer *previewTimer_{nullptr};
	/// The user's own choices, empty when never made.
	QString preferredLayout_{};
	QString preferredStyle_{};
	QString preferredFont_{};
};
