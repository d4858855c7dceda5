#pragma once

#include <QWidget>

#include "fake_frontend/fake_frontend.hpp"
#include "host/fake_helper.hpp"
#include "host/obs_session.hpp"
#include "host/opened_urls.hpp"
#include "host/patience.hpp"
#include "host/test_program.hpp"

#include <obs-module.h>
#include <util/platform.h>

#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QPushButton;

using namespace Qt::StringLiterals;

inline const QString errorColour = u"color:#ff6b81"_s;
inline const QString informationColour = u"color:#8a90a6"_s;
inline const QString pressText = u"Ready. Press Clip that or your Kestrune hotkey."_s;

/// Tests the built module: each test function gets a fresh libobs, a themed main window, a frontend and a fake helper,
/// and loads the module as OBS does.
class DockTest : public QObject {
	Q_OBJECT

protected:
	/// Loads the module; false if it refuses.
	bool load();
	/// Loads the module with a linked account ("ana") and a running Replay Buffer, ready to clip. Then the helper
	/// leaves status queries unanswered, or the dock's own first one would interfere.
	bool loadReady();
	/// A linked helper's answer to --status.
	static QJsonObject linkedStatus();

	/// An exported function of the loaded module.
	template<typename Function> Function *entryPoint(const char *name) const
	{
		return reinterpret_cast<Function *>(os_dlsym(obs_get_module_lib(module_), name));
	}
	/// Destroys the main window and the dock with it, as OBS does before unloading modules.
	void destroyMainWindow();

	QWidget *dock() const;
	template<typename Widget> Widget *child(const QString &objectName) const
	{
		return dock()->findChild<Widget *>(objectName);
	}
	QPushButton *button(const QString &text) const;
	QLabel *label(const QString &text) const;
	QLabel *status() const;
	bool statusIs(const QString &text, const QString &colour) const;
	/// Selects the entry with this user-role data, as a user does.
	void choose(const QString &box, const QVariant &data) const;
	/// Whether a run of this helper command is in flight, until the dock has handled its end.
	bool isRunning(const QString &command) const;
	/// Whether such a run has started, ended or not.
	bool hasStarted(const QString &command) { return isRunning(command) || helper().count(command) > 0; }
	/// Calls a slot by name, directly.
	bool invoke(const char *slot) const;

	/// The preferences file, parsed; empty if missing.
	QJsonObject preferences() const;
	QString preferencesPath() const;
	void writePreferences(const QByteArray &text, const QString &fileName = u"settings.json"_s) const;
	/// A path in this test function's temporary folder.
	QString scratchPath(const QString &fileName) const { return scratch_->filePath(fileName); }

	FakeHelper &helper() { return *helper_; }
	const ObsSession &obs() const { return *obs_; }
	/// What the dock opened with desktop programs.
	const QList<QUrl> &openedUrls() const { return openedUrls_->list(); }

protected Q_SLOTS:
	void init();
	void cleanup();

private:
	std::optional<QTemporaryDir> scratch_{};
	std::optional<FakeHelper> helper_{};
	std::optional<OpenedUrls> openedUrls_{};
	std::optional<ObsSession> obs_{};
	std::unique_ptr<QWidget> mainWindow_{};
	obs_module_t *module_{nullptr};
};

/// Waits until the status line shows this text in this colour.
#define TRY_STATUS(expected, colour) QTRY_VERIFY2(statusIs(expected, colour), qPrintable(status()->text()))
