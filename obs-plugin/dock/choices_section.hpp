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

/// What the user chooses for a Short: the clip length and, in the section "Layout & captions", the look, with a
/// preview. The entries carry their key (or length in seconds) as user-role data.
class ChoicesSection : public QObject {
public:
	ChoicesSection(QBoxLayout *content, QObject *dock, HelperRunner &helper);

	ClipChoices choices() const;
	/// What the user sees of the clip length, such as "Last 30 s".
	QString lengthText() const;

	/// Selects the saved choices.
	void loadPrefs();
	/// Saves the choices in the preferences file.
	void savePrefs();

	/// Refills the boxes from a "status" event; the user's own choices win over the helper's.
	void refill(const QJsonObject &status);
	/// Offers the style "None", disables the position without captions, and shows fonts in their own face.
	void decorateChoices();

	/// Asks for the first preview after a short delay.
	void startFirstPreview();
	/// Asks for a preview of the current choices, if the helper is installed.
	void refreshPreview();

private:
	void buildClipLength(QBoxLayout *content);
	void buildCaptions(QFormLayout *form);
	void buildPreview(QFormLayout *form, QObject *dock);
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
	/// The user's own choices; empty if never made.
	ClipChoices preferred_{};
};
