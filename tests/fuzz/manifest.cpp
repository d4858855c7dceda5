#include <QJsonDocument>
#include <QJsonObject>

#include "dock_host.hpp"
#include "update/manifest.hpp"
#include "update/update_texts.hpp"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHost();
	const QByteArray manifest = toBytes(data, size);
	const QString path = configFolder() + u"/manifest.json"_s;
	qputenv("KESTRUNE_MANIFEST", path.toUtf8());

	writeFile(path, manifest);
	const QString version = installedVersion();
	require(version == manifestVersion(manifest), "a file's version is that of its bytes");

	const QString text = QString::fromUtf8(manifest);
	const QJsonObject rewritten{{u"version"_s, text}};
	require(manifestVersion(QJsonDocument(rewritten).toJson()) == text, "a version comes out as it went in");
	return 0;
}
