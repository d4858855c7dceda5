#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSet>

#include "captions/captions.hpp"
#include "commands/account.hpp"
#include "commands/chat.hpp"
#include "commands/update.hpp"
#include "helper_host.hpp"
#include "support/state.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

// The first letter of an input says which file the helper finds: "a" account.json, "l" look.json, "c" chat.json, "r"
// the release on offer. The rest is the file. The commands that read it answer with events, whatever it holds, and
// leave a file that the next one reads.

namespace {
/// The answer to a command, all of it events of these kinds.
Answer eventsOf(int (*command)(const QCommandLineParser &), const QSet<QString> &kinds)
{
	QCommandLineParser parser;
	parser.addOption({u"chat-set"_s, {}, u"JSON"_s});
	require(parser.parse({u"fuzz"_s, u"--chat-set"_s, u"{\"enabled\":true}"_s}), "the arguments make sense");
	const Answer answer = answerOf([&] { return command(parser); });
	require(answer.events.size() == answer.output.count('\n') && !answer.events.isEmpty(),
		"every line of an answer is an event");
	for (const QJsonObject &event : answer.events) {
		require(kinds.contains(event[u"event"].toString()), "an answer has its own events only");
	}
	return answer;
}

void readAccount()
{
	const Answer before = eventsOf(runStatus, {u"status"_s});
	require(before.exitCode == 0, "there is always a status");
	const Answer unlinked = eventsOf(runUnlink, {u"status"_s});
	require(!unlinked.events.last()[u"linked"].toBool(), "what is forgotten is forgotten");
}

void readLook()
{
	const auto isKnown = [](const Look &look) {
		return layoutKeys().contains(look.layout) && styleKeys().contains(look.style) &&
		       fontKeys().contains(look.font) && positionKeys().contains(look.position);
	};
	const Look look = storedLook();
	require(isKnown(look), "a look holds keys that there are");
	storeLook(look);
	require(storedLook().style == look.style && storedLook().layout == look.layout, "a stored look stays");
	require(eventsOf(runStatus, {u"status"_s}).exitCode == 0, "there is always a status");
}

void readChat()
{
	const QSet<QString> chat{u"chat"_s, u"error"_s};
	eventsOf(runChatGet, chat);
	const Answer first = eventsOf(runPollTriggers, {u"triggers"_s});
	const Answer second = eventsOf(runPollTriggers, {u"triggers"_s});
	require(second.events.last()[u"triggers"].toArray().isEmpty(), "a message triggers once");
	eventsOf(runChatSet, chat);
	require(state::read(u"chat.json"_s)[u"enabled"].toBool(), "settings are stored");
	eventsOf(runNewStream, chat);
	require(state::read(u"chat.json"_s)[u"stream_count"].toInt(-1) == 0, "a new stream counts from zero");
}

void readRelease()
{
	const Answer check = eventsOf(runCheckUpdate, {u"update"_s, u"error"_s});
	const Answer download = eventsOf(runDownloadUpdate, {u"update"_s, u"progress"_s, u"downloaded"_s, u"error"_s});
	const QJsonObject last = download.events.last();
	if (last[u"event"] == u"downloaded"_s) {
		require(check.events.last()[u"latest"] == last[u"latest"], "what is downloaded is what was on offer");
		require(last[u"path"].toString().startsWith(stateFolder() + u"/downloads/"_s) &&
				QFile::exists(last[u"path"].toString()),
			"it lies in the folder for downloads");
	}
}

/// No file of an earlier input is left, and there is something to download.
void tidyUp()
{
	for (const QString &name : {u"account.json"_s, u"look.json"_s, u"chat.json"_s, u"updates/release.json"_s}) {
		QFile::remove(stateFolder() + u'/' + name);
	}
	QDir(stateFolder() + u"/downloads"_s).removeRecursively();
	QDir().mkpath(stateFolder() + u"/updates"_s);
	writeFile(stateFolder() + u"/updates/setup.exe"_s, "installer");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHelperHost();
	tidyUp();
	const QByteArray input = toBytes(data, size);
	const QByteArray content = input.mid(1);
	const QString folder = stateFolder();
	switch (input.isEmpty() ? '\0' : input[0]) {
	case 'a':
		writeFile(folder + u"/account.json"_s, content);
		readAccount();
		break;
	case 'l':
		writeFile(folder + u"/look.json"_s, content);
		readLook();
		break;
	case 'c':
		writeFile(folder + u"/chat.json"_s, content);
		readChat();
		break;
	case 'r':
		writeFile(folder + u"/updates/release.json"_s, content);
		readRelease();
		break;
	default:
		return -1;
	}
	lookForLeaks();
	return 0;
}
