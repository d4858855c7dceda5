#include <QDir>
#include <QFile>
#include <QHash>
#include <QStringList>
#include <QSysInfo>

#include "doctor/remedies.hpp"

using namespace Qt::StringLiterals;

namespace remedies {
namespace {
/// ID and ID_LIKE of /etc/os-release, for example {"linuxmint", "ubuntu", "debian"}.
QStringList systemNames(const QByteArray &osRelease)
{
	QStringList names{};
	for (const QByteArray &line : osRelease.split('\n')) {
		if (line.startsWith("ID=") || line.startsWith("ID_LIKE=")) {
			QString value = QString::fromUtf8(line.mid(line.indexOf('=') + 1)).trimmed();
			value.remove(u'"');
			names += value.split(u' ', Qt::SkipEmptyParts);
		}
	}
	return names;
}

QString fontPackage(const QString &family)
{
	static const QHash<QString, QString> packages{{u"Bebas Neue"_s, u"fonts-bebas-neue"_s},
						      {u"Montserrat"_s, u"fonts-montserrat"_s},
						      {u"Inter"_s, u"fonts-inter"_s}};
	return packages.value(family);
}
} // namespace

System systemOf(const QByteArray &osRelease)
{
	for (const QString &name : systemNames(osRelease)) {
		if (name == u"debian" || name == u"ubuntu") {
			return System::Debian;
		}
		if (name == u"fedora") {
			return System::Fedora;
		}
		if (name == u"arch") {
			return System::Arch;
		}
	}
	return System::Other;
}

System thisSystem()
{
	if (QSysInfo::kernelType() == u"winnt") {
		return System::Windows;
	}
	QFile file(u"/etc/os-release"_s);
	return file.open(QIODevice::ReadOnly) ? systemOf(file.readAll()) : System::Other;
}

QString ffmpeg(System system)
{
	switch (system) {
	case System::Debian:
		return u"sudo apt install ffmpeg"_s;
	case System::Fedora:
		return fullFfmpeg(system);
	case System::Arch:
		return u"sudo pacman -S ffmpeg"_s;
	case System::Windows:
		return u"winget install Gyan.FFmpeg"_s;
	case System::Other:
		break;
	}
	return u"https://ffmpeg.org/download.html"_s;
}

QString fullFfmpeg(System system)
{
	// Fedora's own ffmpeg-free makes no H.264 video with x264.
	return system == System::Fedora ? u"sudo dnf install ffmpeg --allowerasing (RPM Fusion must be switched on: "
					  "https://docs.fedoraproject.org/en-US/quick-docs/rpmfusion-setup/)"_s
					: ffmpeg(system);
}

QString someFont(System system)
{
	switch (system) {
	case System::Debian:
		return u"sudo apt install fonts-dejavu-core"_s;
	case System::Fedora:
		return u"sudo dnf install dejavu-sans-fonts"_s;
	case System::Arch:
		return u"sudo pacman -S ttf-dejavu"_s;
	case System::Windows:
	case System::Other:
		break;
	}
	return u"https://dejavu-fonts.github.io"_s;
}

QString font(const QString &family, System system)
{
	const QString package = fontPackage(family);
	if (system == System::Debian && !package.isEmpty()) {
		return u"sudo apt install %1"_s.arg(package);
	}
	return u"https://fonts.google.com/specimen/%1"_s.arg(QString(family).replace(u' ', u'+'));
}

QString whisper(const QString &folder, System system)
{
	switch (system) {
	case System::Debian:
		return u"sudo apt install whisper.cpp (Debian 14 or newer; else https://github.com/ggml-org/whisper.cpp#quick-start)"_s;
	case System::Windows:
		return u"https://github.com/ggml-org/whisper.cpp/releases: unpack whisper-bin-x64.zip and put the "
		       "files beside whisper-cli.exe, with it, into %1"_s.arg(QDir::toNativeSeparators(folder));
	case System::Fedora:
	case System::Arch:
	case System::Other:
		break;
	}
	return u"https://github.com/ggml-org/whisper.cpp#quick-start, then put whisper-cli into the PATH or %1"_s.arg(
		folder);
}

QString model(const QString &folder)
{
	const QString target = QDir::toNativeSeparators(folder + u"/ggml-base.bin"_s);
	return u"curl -L --create-dirs -o \"%1\" "
	       "https://huggingface.co/ggerganov/whisper.cpp/resolve/main/ggml-base.bin"_s.arg(target);
}
} // namespace remedies
