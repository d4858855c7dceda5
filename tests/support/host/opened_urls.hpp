#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

/// While it lives, catches what the desktop's programs would open.
class OpenedUrls : public QObject {
	Q_OBJECT

public:
	OpenedUrls();
	~OpenedUrls() override;

	const QList<QUrl> &list() const { return urls_; }

private Q_SLOTS:
	void open(const QUrl &url)
	{
		if (url.isValid()) {
			urls_ << url;
		}
	}

private:
	QList<QUrl> urls_{};
};
