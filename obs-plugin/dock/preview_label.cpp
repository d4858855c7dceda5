#include <QPixmap>

#include "dock/preview_label.hpp"
#include "dock/preview_picture.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr QSize maxPreview_px{160, 284};
} // namespace

PreviewLabel::PreviewLabel()
{
	setObjectName(u"preview"_s);
	setAccessibleName(u"Preview"_s);
	setAlignment(Qt::AlignCenter);
	hide();
}

void PreviewLabel::showPicture(const QString &path)
{
	const QImage picture = readPreviewPicture(path, maxPreview_px);
	if (picture.isNull()) {
		hide();
		return;
	}

	setPixmap(QPixmap::fromImage(picture));
	show();
}
