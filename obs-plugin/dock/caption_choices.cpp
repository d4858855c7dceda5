#include <QComboBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFormLayout>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QTimer>

#include "dock/choice_tables.hpp"
#include "dock/dock_section.hpp"
#include "dock/kestrune_dock.hpp"
#include "helper/helper_locator.hpp"

#include <chrono>

using namespace std::chrono_literals;

namespace {
constexpr QSize previewSize_px{160, 284};

/// Entries whose font is installed are shown in it, one point larger than the box.
void showFontsInTheirOwnFace(QComboBox *box)
{
	const QStringList families = QFontDatabase::families();
	const qreal boxSize_pt =
		box->font().pointSizeF() > 0 ? box->font().pointSizeF() : QFontInfo(box->font()).pointSizeF();

	for (int index = 0; index < box->count(); ++index) {
		const QString family = box->itemText(index);
		if (!families.contains(family, Qt::CaseInsensitive))
			continue;
		QFont face(family);
		face.setPointSizeF(boxSize_pt + 1.0);
		box->setItemData(index, face, Qt::FontRole);
	}
}
} // namespace

void KestruneDock::buildStyleSection(QVBoxLayout *content)
{
	QFormLayout *form = sectionForm(
		addSection(content, QStringLiteral("Layout && captions"), QStringLiteral("styleSection"), this));

	layoutBox_ = addChoiceRow(form, QStringLiteral("Layout"), QStringLiteral("layout"));
	styleBox_ = addChoiceRow(form, QStringLiteral("Caption style"), QStringLiteral("style"));
	fontBox_ = addChoiceRow(form, QStringLiteral("Font"), QStringLiteral("font"));
	positionBox_ = addChoiceRow(form, QStringLiteral("Caption position"), QStringLiteral("pos"));

	preview_ = new QLabel;
	preview_->setObjectName(QStringLiteral("preview"));
	preview_->setAlignment(Qt::AlignCenter);
	preview_->hide();
	form->addRow(preview_);

	previewTimer_ = new QTimer(this);
	previewTimer_->setSingleShot(true);
	connect(previewTimer_, &QTimer::timeout, this, &KestruneDock::refreshPreview);
}

void KestruneDock::onChoiceChanged()
{
	decorateChoices();
	previewTimer_->start(400ms);
}

void KestruneDock::decorateChoices()
{
	// The helper's own list may lack "none"; captions can always be switched off.
	const QString none = QString::fromUtf8(noCaptionsKey);
	if (styleBox_->findData(none) < 0)
		styleBox_->addItem(displayName(styleTable, none), none);

	const bool captions = currentKey(styleBox_) != none;
	positionBox_->setEnabled(captions);
	positionBox_->setToolTip(captions ? QStringLiteral("Where captions sit on the Short")
					  : QStringLiteral("No captions with style None"));

	showFontsInTheirOwnFace(fontBox_);
}

void KestruneDock::refreshPreview()
{
	if (!QFileInfo::exists(locateHelper()))
		return;

	runHelper({QStringLiteral("--preview"), QStringLiteral("--layout"), currentKey(layoutBox_),
		   QStringLiteral("--style"), currentKey(styleBox_), QStringLiteral("--font"), currentKey(fontBox_),
		   QStringLiteral("--caption-position"), currentKey(positionBox_)},
		  [this](const QJsonObject &event) { showPreview(event); }, {});
}

void KestruneDock::showPreview(const QJsonObject &event)
{
	if (event[u"event"].toString() != u"preview")
		return;

	const QJsonValue path = event[u"path"];
	// Not a QPixmap: its cache may answer with the picture that this file held a moment ago.
	QImage picture;
	if (!path.isString() || !picture.load(path.toString())) {
		preview_->hide();
		return;
	}

	preview_->setPixmap(
		QPixmap::fromImage(picture.scaled(previewSize_px, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
	preview_->show();
}
