#pragma once

#include <QJsonObject>
#include <QString>

#include <exception>

/// Makes text from strangers (chat names, file names, other programs' messages) safe to show: replaces "<" by "‹", so
/// that it isn't read as markup.
QString plainText(QString text);

/// Writes one event as a line of JSON to standard output and flushes it, so that the dock sees it at once. Removes
/// markup from the texts for people ("error", "note", "notes").
void sendEvent(const QString &name, QJsonObject members = {});

/// A reason to give up, thrown by any command; main() reports it as the run's "error" event. Its text is a sentence
/// that the person who streams can read by itself, full stop included. It begins in lower case where the dock may put
/// something such as "Clip kept locally: " in front, that is, unless the arguments themselves are wrong.
class Failure : public std::exception {
public:
	explicit Failure(QString text, QJsonObject members = {});

	const char *what() const noexcept override { return utf8_.constData(); }
	const QString &text() const { return text_; }
	/// The text for the inside of another sentence: without its full stop.
	QString clause() const;
	/// Members that the "error" event carries besides its text.
	const QJsonObject &members() const { return members_; }

private:
	QString text_{};
	QByteArray utf8_{};
	QJsonObject members_{};
};
