#include <QComboBox>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVBoxLayout>

#include "dock/choices_section.hpp"
#include "dock/preferences_file.hpp"
#include "dock_host.hpp"
#include "host/fake_runner.hpp"

#include <array>

using namespace Qt::StringLiterals;

// The first line of an input holds the entries that the user picks, a character for each box; the rest is the
// preferences file that is there when OBS starts. Without picks one key is written, as the hotkey's section does. The
// choices come without their dock: it has no part in them, and making one for each input takes most of the time.

namespace {
const std::array boxNames{u"seconds"_s, u"layout"_s, u"style"_s, u"font"_s, u"pos"_s};
const std::array memberNames{u"seconds"_s, u"layout"_s, u"style"_s, u"font"_s, u"caption_position"_s};

/// The section of the choices as it is after the start of OBS.
struct Choices {
	QWidget window{};
	QVBoxLayout *layout{new QVBoxLayout(&window)};
	FakeRunner helper{};
	ChoicesSection section{layout, &window, helper};

	Choices()
	{
		section.loadPrefs();
		section.decorateChoices();
	}
	QComboBox *box(size_t index) const { return window.findChild<QComboBox *>(boxNames[index]); }
};

QJsonObject chosenIn(const Choices &choices)
{
	QJsonObject chosen;
	for (size_t box = 0; box < boxNames.size(); ++box) {
		const QVariant data = choices.box(box)->currentData();
		chosen[memberNames[box]] = QJsonValue::fromVariant(data);
	}
	return chosen;
}

void choose(const Choices &choices, const QByteArray &picks)
{
	for (qsizetype pick = 0; pick < picks.size() && pick < static_cast<qsizetype>(boxNames.size()); ++pick) {
		QComboBox *box = choices.box(static_cast<size_t>(pick));
		box->setCurrentIndex(static_cast<uint8_t>(picks[pick]) % box->count());
	}
}

/// What the file holds besides the choices, as far as libobs's data objects can hold it.
QJsonObject foreignMembers(obs_data_t *preferences)
{
	for (const QString &name : memberNames) {
		obs_data_erase(preferences, name.toUtf8().constData());
	}
	return QJsonDocument::fromJson(obs_data_get_json(preferences)).object();
}

/// The same, as Qt reads it.
QJsonObject foreignMembers(const QByteArray &file)
{
	QJsonObject members = QJsonDocument::fromJson(file).object();
	for (const QString &name : memberNames) {
		members.remove(name);
	}
	return members;
}

/// The file after one key was written into it.
QJsonObject writeKey()
{
	updatePreferences([](obs_data_t *changed) { obs_data_set_int(changed, "seconds", 30); });
	return {{u"seconds"_s, 30}};
}

/// What is chosen after the section of the file was given the user's picks, and has saved them.
QJsonObject pickAndSave(const QByteArray &picks)
{
	Choices choices;
	choose(choices, picks);
	choices.section.savePrefs();
	return chosenIn(choices);
}

/// `before` and `file`: what libobs read before the file was written, and the bytes it read.
void requireKept(const OBSDataAutoRelease &before, const QByteArray &file, const OBSDataAutoRelease &after)
{
	require(readFile(settingsPath() + u".bak"_s) == file, "the previous file is the backup");
	require(foreignMembers(before) == foreignMembers(after), "other keys are kept, as libobs reads them");
	require(!QJsonDocument::fromJson(file).isObject() ||
			foreignMembers(file) == foreignMembers(readFile(settingsPath())),
		"other keys are kept, element by element");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	startHost();
	QByteArray file = toBytes(data, size);
	const QByteArray picks = takeLine(file);
	QFile::remove(settingsPath() + u".bak"_s);
	writeFile(settingsPath(), file);

	const OBSDataAutoRelease before = readPreferences();
	const QJsonObject chosen = picks.isEmpty() ? writeKey() : pickAndSave(picks);
	const OBSDataAutoRelease after = readPreferences();
	require(after != nullptr, "the saved file can be read");
	const QJsonObject members = QJsonDocument::fromJson(obs_data_get_json(after)).object();
	for (auto choice = chosen.begin(); choice != chosen.end(); ++choice) {
		require(members[choice.key()] == choice.value(), "the file holds the choices");
	}
	if (before) {
		requireKept(before, file, after);
	}
	if (!picks.isEmpty()) {
		const Choices next;
		require(chosenIn(next) == chosen, "the next start shows the choices that were saved");
	}
	lookForLeaks();
	return 0;
}
