#pragma once

#include <QJsonObject>
#include <QString>

#include <exception>

/// A text that holds what strangers wrote (names in chat, messages of other programs, names of files), so that nobody
/// takes it for markup: each "<" becomes a "‹".
QString plainText(QString text);

/// Writes one event as a line of JSON to standard output and flushes it, so that the dock sees it at once. Texts for
/// people ("error", "note", "notes") go out without markup.
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
