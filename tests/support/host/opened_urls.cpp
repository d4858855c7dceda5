#include <QDesktopServices>

#include "host/opened_urls.hpp"

#include <array>

namespace {
// The last: addresses that name none.
const std::array schemes{QStringLiteral("file"), QStringLiteral("http"), QStringLiteral("https"), QString()};
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
