#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>
#include <QThread>

#include "commands/update.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/files.hpp"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
struct Release {
	QString version{};
	QString notes{};
	QString installer{};
	/// In lower-case hexadecimal digits.
	QString sha256{};
};

/// The release on offer; nothing if there is none or it is the installed one. Throws Failure if it makes no sense.
std::optional<Release> offeredRelease()
{
	const QString path = environment::releaseFolder() + u"/release.json"_s;
	if (!QFileInfo::exists(path)) {
		return std::nullopt;
	}
	const QJsonObject object = QJsonDocument::fromJson(files::readSmall(path)).object();
	Release release{object.value(u"version").toString(), object.value(u"notes").toString(),
			object.value(u"installer").toString(), object.value(u"sha256").toString().toLower()};
	// The name is joined to two folders: it must not lead out of them.
	const bool isPlainName = !release.installer.isEmpty() && !release.installer.startsWith(u'.') &&
				 !release.installer.contains(u'/') && !release.installer.contains(u'\\');
	static const QRegularExpression plainVersion(uR"(^[0-9A-Za-z.+_-]{1,64}$)"_s);
	if (!plainVersion.match(release.version).hasMatch() || !isPlainName) {
		throw Failure(u"%1 names no version or no installer beside it."_s.arg(path));
	}
	static const QRegularExpression checksum(u"^[0-9a-f]{64}$"_s);
	if (!checksum.match(release.sha256).hasMatch()) {
		throw Failure(u"%1 gives no sha256 of the installer, so nobody could tell a false one."_s.arg(path));
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

Failure saveFailure(const QString &folder, const QString &systemText)
{
	return Failure(u"couldn't save the installer in %1: %2."_s.arg(folder, files::cause(systemText)));
}

/// Copies piece by piece at a pace that lets a person follow the progress; returns the checksum. Throws Failure.
QString copyWithProgress(QFile &source, QSaveFile &target, const QString &folder)
{
	constexpr int pieces = 20;
	QCryptographicHash hash(QCryptographicHash::Sha256);
	const qint64 size = source.size();
	const qint64 pieceSize = std::max<qint64>(1, (size + pieces - 1) / pieces);
	qint64 done = 0;
	while (done < size) {
		QThread::msleep(static_cast<unsigned long>(environment::downloadDelay_ms() / pieces));
		const QByteArray piece = source.read(pieceSize);
		if (piece.isEmpty()) {
			throw Failure(u"couldn't read the installer %1: %2."_s.arg(source.fileName(),
										   files::cause(source.errorString())));
		}
		const QString problem = files::writeAll(target, piece);
		if (!problem.isEmpty()) {
			throw saveFailure(folder, problem);
		}
		hash.addData(piece);
		done += piece.size();
		sendEvent(u"progress"_s,
			  {{u"phase"_s, u"download"_s}, {u"percent"_s, std::min<qint64>(100, done * 100 / size)}});
	}
	return QString::fromLatin1(hash.result().toHex());
}

/// Copies the installer to a folder of the user alone; returns the path of the copy. Throws Failure.
QString download(const Release &release)
{
	QFile source(environment::releaseFolder() + u'/' + release.installer);
	if (!source.open(QIODevice::ReadOnly) || source.size() == 0) {
		throw Failure(u"the installer %1 is missing or empty."_s.arg(source.fileName()));
	}
	const QString folder = environment::stateFolder() + u"/downloads"_s;
	// The installer stays there until the user agrees to run it.
	files::makePrivateFolder(folder);
	// Nothing of an unfinished or refused download ever appears under the installer's name.
	QSaveFile target(folder + u'/' + release.installer);
	if (!target.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
		throw saveFailure(folder, target.errorString());
	}
	if (copyWithProgress(source, target, folder) != release.sha256) {
		throw Failure(u"the downloaded installer is damaged."_s);
	}
	if (!target.commit()) {
		throw saveFailure(folder, target.errorString());
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
