#include <QCryptographicHash>
#include <QDir>
#include <QJsonDocument>
#include <QSaveFile>
#include <QThread>

#include "commands/update.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/state.hpp"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Release {
	QString version{};
	QString notes{};
	QString installer{};
	/// In lower-case hexadecimal digits; empty when none is given.
	QString sha256{};
};

/// The release on offer; nothing if there is none or it is the installed one. Throws Failure if it makes no sense.
std::optional<Release> offeredRelease()
{
	QFile file(environment::releaseFolder() + u"/release.json"_s);
	if (!file.exists()) {
		return std::nullopt;
	}
	if (!file.open(QIODevice::ReadOnly)) {
		throw Failure(u"couldn't read %1 (%2)."_s.arg(file.fileName(), file.errorString()));
	}
	const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
	Release release{object.value(QLatin1String("version")).toString(),
			object.value(QLatin1String("notes")).toString(),
			object.value(QLatin1String("installer")).toString(),
			object.value(QLatin1String("sha256")).toString().toLower()};
	// The name is joined to two folders: it must not lead out of them.
	const bool isPlainName = !release.installer.isEmpty() && !release.installer.startsWith(QLatin1Char('.')) &&
				 !release.installer.contains(QLatin1Char('/')) &&
				 !release.installer.contains(QLatin1Char('\\'));
	if (release.version.isEmpty() || !isPlainName) {
		throw Failure(u"%1 names no version or no installer beside it."_s.arg(file.fileName()));
	}
	if (release.version == environment::currentVersion()) {
		return std::nullopt;
	}
	return release;
}

void sendNoUpdate()
{
	sendEvent(u"update"_s, {{u"update"_s, false}});
}

/// Copies the installer piece by piece at a pace that lets a person follow the progress; returns the path of the copy.
QString download(const Release &release)
{
	constexpr int pieces = 20;
	QFile source(environment::releaseFolder() + QLatin1Char('/') + release.installer);
	if (!source.open(QIODevice::ReadOnly) || source.size() == 0) {
		throw Failure(u"the installer %1 is missing or empty."_s.arg(source.fileName()));
	}
	const QString folder = environment::stateFolder() + u"/downloads"_s;
	state::makeFolder(folder);
	// Nothing of an unfinished or refused download ever appears under the installer's name.
	QSaveFile target(folder + QLatin1Char('/') + release.installer);
	QCryptographicHash hash(QCryptographicHash::Sha256);
	bool copied = target.open(QIODevice::WriteOnly);
	const qint64 size = source.size();
	const qint64 pieceSize = std::max<qint64>(1, (size + pieces - 1) / pieces);
	qint64 done = 0;
	while (copied && done < size) {
		QThread::msleep(static_cast<unsigned long>(environment::downloadDelay_ms() / pieces));
		const QByteArray piece = source.read(pieceSize);
		hash.addData(piece);
		copied = !piece.isEmpty() && target.write(piece) == piece.size();
		done += piece.size();
		sendEvent(u"progress"_s,
			  {{u"phase"_s, u"download"_s}, {u"percent"_s, std::min<qint64>(100, done * 100 / size)}});
	}
	const QString sha256 = QString::fromLatin1(hash.result().toHex());
	if (copied && !release.sha256.isEmpty() && release.sha256 != sha256) {
		throw Failure(u"the downloaded installer is damaged."_s);
	}
	if (!copied || !target.commit()) {
		throw Failure(u"couldn't save the installer in %1 (%2)."_s.arg(folder, target.errorString()));
	}
	return target.fileName();
}

} // namespace

int runCheckUpdate(const QCommandLineParser &)
{
	const std::optional<Release> release = offeredRelease();
	if (!release) {
		sendNoUpdate();
		return 0;
	}
	sendEvent(u"update"_s, {{u"update"_s, true}, {u"latest"_s, release->version}, {u"notes"_s, release->notes}});
	return 0;
}

int runDownloadUpdate(const QCommandLineParser &)
{
	const std::optional<Release> release = offeredRelease();
	if (!release) {
		sendNoUpdate();
		return 0;
	}
	const QString path = download(*release);
	sendEvent(u"downloaded"_s, {{u"latest"_s, release->version}, {u"path"_s, path}});
	return 0;
}
