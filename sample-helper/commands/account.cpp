#include <QJsonArray>
#include <QRandomGenerator>
#include <QThread>

#include "captions/captions.hpp"
#include "commands/account.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/state.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1StringView accountFile("account.json");
constexpr QLatin1StringView linkKey("link");
constexpr QLatin1StringView linkedValue("linked");
constexpr QLatin1StringView revokedValue("revoked");

void storeLink(const QString &value)
{
	state::update(accountFile, [&value](QJsonObject &account) { account[linkKey] = value; });
}

/// Four letters, a dash and four digits. Letters that look like digits are left out: people read codes aloud.
QString randomCode()
{
	const QString letters = u"ABCDEFGHJKLMNPQRSTUVWXYZ"_s;
	QRandomGenerator *random = QRandomGenerator::system();
	QString code{};
	for (int i = 0; i < 4; ++i) {
		code += letters.at(random->bounded(static_cast<int>(letters.size())));
	}
	return code + u"-%1"_s.arg(random->bounded(10000), 4, 10, QChar(u'0'));
}
} // namespace

Link currentLink()
{
	const QString value = state::read(accountFile).value(linkKey).toString();
	if (value == linkedValue) {
		return Link::Linked;
	}
	return value == revokedValue ? Link::Revoked : Link::Unlinked;
}

int runStatus(const QCommandLineParser &)
{
	const Link link = currentLink();
	const Look look = storedLook();
	QJsonObject members{{u"linked"_s, link == Link::Linked},
			    {u"offline"_s, environment::isOffline()},
			    {u"layout"_s, look.layout},
			    {u"style"_s, look.style},
			    {u"font"_s, look.font},
			    {u"layouts"_s, QJsonArray::fromStringList(layoutKeys())},
			    {u"styles"_s, QJsonArray::fromStringList(styleKeys())},
			    {u"fonts"_s, QJsonArray::fromStringList(fontKeys())}};
	if (link == Link::Linked) {
		members[u"login"_s] = u"sample"_s;
	} else if (link == Link::Revoked) {
		members[u"error"_s] = u"revoked"_s;
	}
	sendEvent(u"status"_s, members);
	return 0;
}

int runLink(const QCommandLineParser &)
{
	const QString code = randomCode();
	const QString text = u"Code <b>%1</b>. There is nothing to click and no network is used: "
			     "this device links itself in a moment. You can close this page."_s.arg(code);
	const QString address = state::writePage(u"link.html"_s, u"Kestrune sample helper"_s, text);
	sendEvent(u"code"_s, {{u"url"_s, address}, {u"code"_s, code}});
	QThread::msleep(static_cast<unsigned long>(environment::linkDelay_ms()));
	storeLink(linkedValue);
	qInfo("linked");
	sendEvent(u"linked"_s);
	return 0;
}

int runUnlink(const QCommandLineParser &parser)
{
	storeLink({});
	return runStatus(parser);
}

int runRevoke(const QCommandLineParser &parser)
{
	storeLink(revokedValue);
	return runStatus(parser);
}
