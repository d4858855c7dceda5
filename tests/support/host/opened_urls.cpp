#include <QDesktopServices>

#include "host/opened_urls.hpp"

#include <array>

using namespace Qt::StringLiterals;

namespace {
// The empty scheme catches addresses without one.
const std::array schemes{u"file"_s, u"http"_s, u"https"_s, QString()};
} // namespace

OpenedUrls::OpenedUrls()
{
	for (const QString &scheme : schemes) {
		QDesktopServices::setUrlHandler(scheme, this, "open");
	}
}

OpenedUrls::~OpenedUrls()
{
	for (const QString &scheme : schemes) {
		QDesktopServices::unsetUrlHandler(scheme);
	}
}
