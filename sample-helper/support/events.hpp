#pragma once

#include <QJsonObject>
#include <QString>

#include <exception>

/// Writes one event as a line of JSON to standard output and flushes it, so that the dock sees it at once.
void sendEvent(const QString &name, QJsonObject members = {});

/// A reason to give up, worded for the person who streams. Thrown by any command; main() reports it as the run's
/// "error" event. The dock puts texts such as "Clip kept locally: " in front, so a text begins in lower case and ends
/// with a full stop.
class Failure : public std::exception {
public:
	explicit Failure(QString text, QJsonObject members = {});

	const char *what() const noexcept override { return utf8_.constData(); }
	const QString &text() const { return text_; }
	/// Members that the "error" event carries besides its text.
	const QJsonObject &members() const { return members_; }

private:
	QString text_{};
	QByteArray utf8_{};
	QJsonObject members_{};
};
