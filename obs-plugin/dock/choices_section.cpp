#include <QComboBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFormLayout>
#include <QJsonArray>
#include <QJsonObject>
#include <QTimer>

#include "dock/choice_tables.hpp"
#include "dock/choices_section.hpp"
#include "dock/dock_section.hpp"
#include "dock/preferences_file.hpp"
#include "dock/preview_label.hpp"
#include "helper/helper_runner.hpp"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
constexpr int minBox_characters = 8;
// Nobody scrolls further, and a box of a million entries would hold up OBS for seconds.
constexpr int maxChoices = 1000;

QComboBox *addBox(QFormLayout *form, const QString &label, const QString &objectName)
{
	auto *box = new QComboBox;
	box->setObjectName(objectName);
	// Add it to the form first: the policy makes Qt build the box's list, which would otherwise be styled twice,
	// now and again inside the dock.
	form->addRow(label, box);
	// Not as wide as its longest entry: the helper may name any, and Qt measures them all.
	box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
	box->setMinimumContentsLength(minBox_characters);
	return box;
}

/// Shows each installed font's entry in that font, one point larger than the box.
void showFontsInTheirOwnFace(QComboBox *box)
{
	const QStringList families = QFontDatabase::families();
	const qreal boxSize_pt =
		box->font().pointSizeF() > 0 ? box->font().pointSizeF() : QFontInfo(box->font()).pointSizeF();

	for (int index = 0; index < box->count(); ++index) {
		const QString family = box->itemText(index);
		if (!families.contains(family, Qt::CaseInsensitive)) {
			continue;
		}
		QFont face(family);
		face.setPointSizeF(boxSize_pt + 1.0);
		box->setItemData(index, face, Qt::FontRole);
	}
}

/// The array's first maxChoices elements as strings; empty for those of another type.
QStringList toStrings(const QJsonArray &array)
{
	QStringList strings;
	for (const QJsonValue value : array) {
		if (strings.size() == maxChoices) {
			break;
		}
		strings << value.toString();
	}
	return strings;
}

/// Refills a box from the list `keysMember` and selects the user's choice or else the helper's.
void refillFrom(const QJsonObject &status, QComboBox *box, ChoiceTable table, QStringView keysMember,
		QStringView currentMember, const QString &preferredKey)
{
	const QString desiredKey = preferredKey.isEmpty() ? status[currentMember].toString() : preferredKey;
	refillChoices(box, table, toStrings(status[keysMember].toArray()), desiredKey);
}
} // namespace

ChoicesSection::ChoicesSection(QBoxLayout *content, QObject *dock, HelperRunner &helper)
	: helper_(helper)
{
	buildClipLength(content);
	QFormLayout *form = sectionForm(addSection(content, u"Layout && captions"_s, u"styleSection"_s, dock));
	buildCaptions(form);
	buildPreview(form, dock);
	connectBoxes();
}

void ChoicesSection::buildClipLength(QBoxLayout *content)
{
	auto *form = new QFormLayout;
	form->setContentsMargins(0, 0, 0, 0);
	form->setVerticalSpacing(3);
	content->addLayout(form);

	lengthBox_ = addBox(form, u"Clip length"_s, u"seconds"_s);
	for (const int length_s : clipLengths_s) {
		lengthBox_->addItem(u"Last %1 s"_s.arg(length_s), length_s);
	}
	lengthBox_->setCurrentIndex(lengthBox_->findData(defaultClipLength_s));
}

void ChoicesSection::buildCaptions(QFormLayout *form)
{
	layoutBox_ = addBox(form, u"Layout"_s, u"layout"_s);
	styleBox_ = addBox(form, u"Caption style"_s, u"style"_s);
	fontBox_ = addBox(form, u"Font"_s, u"font"_s);
	positionBox_ = addBox(form, u"Caption position"_s, u"pos"_s);
	fillChoices(layoutBox_, layoutTable);
	fillChoices(styleBox_, styleTable);
	fillChoices(fontBox_, fontTable);
	fillChoices(positionBox_, positionTable);
}

void ChoicesSection::buildPreview(QFormLayout *form, QObject *dock)
{
	preview_ = new PreviewLabel;
	form->addRow(preview_);
	previewTimer_ = new QTimer(dock);
	previewTimer_->setSingleShot(true);
	connect(previewTimer_, &QTimer::timeout, this, &ChoicesSection::refreshPreview);
}

void ChoicesSection::connectBoxes()
{
	// "activated" is for the user's choices only: what code selects is neither saved nor previewed.
	for (const QComboBox *box : {lengthBox_, layoutBox_, styleBox_, fontBox_, positionBox_}) {
		connect(box, &QComboBox::activated, this, &ChoicesSection::savePrefs);
	}
	for (const QComboBox *box : {layoutBox_, styleBox_, fontBox_, positionBox_}) {
		connect(box, &QComboBox::activated, this, &ChoicesSection::onChoiceChanged);
	}
}

ClipChoices ChoicesSection::choices() const
{
	return {.length_s = lengthBox_->currentData().toInt(),
		.layout = currentKey(layoutBox_),
		.style = currentKey(styleBox_),
		.font = currentKey(fontBox_),
		.captionPosition = currentKey(positionBox_)};
}

QString ChoicesSection::lengthText() const
{
	return lengthBox_->currentText();
}

void ChoicesSection::loadPrefs()
{
	const std::optional<ClipChoices> stored = storedChoices();
	if (!stored) {
		return;
	}

	preferred_ = *stored;
	const int index = lengthBox_->findData(preferred_.length_s);
	lengthBox_->setCurrentIndex(index >= 0 ? index : lengthBox_->findData(defaultClipLength_s));
	selectByKey(layoutBox_, preferred_.layout);
	selectByKey(styleBox_, preferred_.style);
	selectByKey(fontBox_, preferred_.font);
	selectByKey(positionBox_, preferred_.captionPosition);
}

void ChoicesSection::savePrefs()
{
	preferred_ = choices();
	storeChoices(preferred_);
}

void ChoicesSection::refill(const QJsonObject &status)
{
	refillFrom(status, layoutBox_, layoutTable, u"layouts", u"layout", preferred_.layout);
	refillFrom(status, styleBox_, styleTable, u"styles", u"style", preferred_.style);
	refillFrom(status, fontBox_, fontTable, u"fonts", u"font", preferred_.font);
}

void ChoicesSection::decorateChoices()
{
	// The helper's list may lack "none", but captions can always be turned off.
	const QString none = QString::fromUtf8(noCaptionsKey);
	if (styleBox_->findData(none) < 0) {
		styleBox_->addItem(displayName(styleTable, none), none);
	}

	const bool captions = currentKey(styleBox_) != none;
	positionBox_->setEnabled(captions);
	positionBox_->setToolTip(captions ? u"Where captions sit on the Short"_s : u"No captions with style None"_s);

	showFontsInTheirOwnFace(fontBox_);
}

void ChoicesSection::onChoiceChanged()
{
	decorateChoices();
	previewTimer_->start(400ms);
}

void ChoicesSection::startFirstPreview()
{
	previewTimer_->start(2500ms);
}

void ChoicesSection::refreshPreview()
{
	if (!helper_.isInstalled()) {
		return;
	}

	const ClipChoices chosen = choices();
	helper_.ask({u"--preview"_s, u"--layout"_s, chosen.layout, u"--style"_s, chosen.style, u"--font"_s, chosen.font,
		     u"--caption-position"_s, chosen.captionPosition},
		    u"preview"_s,
		    [this](const QJsonObject &preview) { preview_->showPicture(preview[u"path"].toString()); });
}
