#include <QDesktopServices>

#include "host/opened_urls.hpp"

#include <array>

namespace {
const std::array schemes{QStringLiteral("file"), QStringLiteral("http"), QStringLiteral("https")};
} // namespace

OpenedUrls::OpenedUrls()
{
	for (const QString &scheme : schemes)
		QDesktopServices::setUrlHandler(scheme, this, "open");
}

OpenedUrls::~OpenedUrls()
{
	for (const QString &scheme : schemes)
		QDesktopServices::unsetUrlHandler(scheme);
}
