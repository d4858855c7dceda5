#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

/// Catches what is opened with the desktop's programs while this object lives.
class OpenedUrls : public QObject {
	Q_OBJECT

public:
	OpenedUrls();
	~OpenedUrls() override;

	const QList<QUrl> &list() const { return urls_; }

private Q_SLOTS:
	void open(const QUrl &url)
	{
		// There is nothing at an empty address.
		if (url.isValid()) {
			urls_ << url;
		}
	}

private:
	QList<QUrl> urls_{};
};
