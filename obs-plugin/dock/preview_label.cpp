#include <QImage>
#include <QJsonObject>
#include <QPixmap>

#include "dock/preview_label.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr QSize largestPreview_px{160, 284};
} // namespace

PreviewLabel::PreviewLabel()
{
	setObjectName(u"preview"_s);
	setAccessibleName(u"Preview"_s);
	setAlignment(Qt::AlignCenter);
	hide();
}

void PreviewLabel::showPreview(const QJsonObject &event)
{
	if (event[u"event"].toString() != u"preview") {
		return;
	}

	const QJsonValue path = event[u"path"];
	// Not a QPixmap: its cache may answer with the picture that this file held a moment ago.
	QImage picture;
	if (!path.isString() || !picture.load(path.toString())) {
		hide();
		return;
	}

	setPixmap(QPixmap::fromImage(picture.scaled(largestPreview_px, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
	show();
}
