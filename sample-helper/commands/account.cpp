#include "commands/account.hpp"

#include "captions/captions.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/state.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

#include <QJsonArray>
#include <QRandomGenerator>
#include <QThread>

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
	const QString letters = QStringLiteral("ABCDEFGHJKLMNPQRSTUVWXYZ");
	QRandomGenerator *random = QRandomGenerator::system();
	QString code{};
	for (int i = 0; i < 4; ++i) {
		code += letters.at(random->bounded(static_cast<int>(letters.size())));
	}
	return code + QStringLiteral("-%1").arg(random->bounded(10000), 4, 10, QLatin1Char('0'));
}

} // namespace

Link currentLink()
{
	const QString value = state::read(accountFile).value(linkKey).toString();
	if (value == linkedValue) {
		return Link::linked;
	}
	return value == revokedValue ? Link::revoked : Link::unlinked;
}

int runStatus(const QCommandLineParser &)
{
	const Link link = currentLink();
	const Look look = storedLook();
	QJsonObject members{{QStringLiteral("linked"), link == Link::linked},
			    {QStringLiteral("offline"), environment::isOffline()},
			    {QStringLiteral("layout"), look.layout},
			    {QStringLiteral("style"), look.style},
			    {QStringLiteral("font"), look.font},
			    {QStringLiteral("layouts"), QJsonArray::fromStringList(layoutKeys())},
			    {QStringLiteral("styles"), QJsonArray::fromStringList(styleKeys())},
			    {QStringLiteral("fonts"), QJsonArray::fromStringList(fontKeys())}};
	if (link == Link::linked) {
		members[QStringLiteral("login")] = QStringLiteral("sample");
	} else if (link == Link::revoked) {
		members[QStringLiteral("error")] = QStringLiteral("revoked");
	}
	sendEvent(QStringLiteral("status"), members);
	return 0;
}

int runLink(const QCommandLineParser &)
{
	const QString code = randomCode();
	const QString text = QStringLiteral("Code <b>%1</b>. There is nothing to click and no network is used: "
					    "this device links itself in a moment. You can close this page.")
				     .arg(code);
	const QString address =
		state::writePage(QStringLiteral("link.html"), QStringLiteral("Kestrune sample helper"), text);
	sendEvent(QStringLiteral("code"), {{QStringLiteral("url"), address}, {QStringLiteral("code"), code}});
	QThread::msleep(static_cast<unsigned long>(environment::linkDelay_ms()));
	storeLink(linkedValue);
	qInfo("linked");
	sendEvent(QStringLiteral("linked"));
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
