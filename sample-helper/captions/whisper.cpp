#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "captions/whisper.hpp"
#include "support/environment.hpp"

using namespace Qt::StringLiterals;

namespace whisper {
QString programFolder()
{
	return environment::stateFolder() + u"/whisper"_s;
}

QString modelFolder()
{
	return environment::stateFolder() + u"/models"_s;
}

QString program()
{
	const QString configured = environment::whisperProgram();
	if (!configured.isEmpty()) {
		return QStandardPaths::findExecutable(configured);
	}
	const QString name = u"whisper-cli"_s;
	const QString installed = QStandardPaths::findExecutable(name);
	return installed.isEmpty() ? QStandardPaths::findExecutable(name, {programFolder()}) : installed;
}

QString model()
{
	const QString configured = environment::whisperModel();
	if (!configured.isEmpty()) {
		return QFileInfo(configured).absoluteFilePath();
	}
	const QFileInfoList models = QDir(modelFolder()).entryInfoList({u"ggml-*.bin"_s}, QDir::Files, QDir::Size);
	return models.isEmpty() ? QString() : models.first().absoluteFilePath();
}

bool looksLikeModel(const QString &path)
{
	// The number 0x67676d6c, the lowest byte first.
	constexpr QByteArrayView mark("lmgg");
	QFile file(path);
	return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && file.read(mark.size()) == mark;
}
} // namespace whisper
