#include <QDir>
#include <QLabel>
#include <QMetaMethod>
#include <QProcess>
#include <QTimer>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"
#include "host/system.hpp"

/// Loading the module, what that sets up, and what remains after unload.
class ModuleTest : public DockTest {
	Q_OBJECT

	void addLocale(const QString &name, const QByteArray &text) const
	{
		QDir().mkpath(scratchPath(u"locale"_s));
		QFile file(scratchPath(u"locale/"_s + name));
		QVERIFY(file.open(QIODevice::WriteOnly));
		file.write(text);
	}

	QString translated(const char *key) const
	{
		const char *text = nullptr;
		const bool found = entryPoint<bool(const char *, const char **)>("obs_module_get_string")(key, &text);
		return found ? QString::fromUtf8(text) : QString();
	}

private Q_SLOTS:
	void exportsWhatObsLooksUp_data()
	{
		QTest::addColumn<QByteArray>("name");
		for (const char *name :
		     {"obs_module_set_pointer", "obs_current_module", "obs_module_ver", "obs_module_set_locale",
		      "obs_module_free_locale", "obs_module_get_string", "obs_module_name", "obs_module_description",
		      "obs_module_load", "obs_module_post_load", "obs_module_unload"}) {
			QTest::newRow(name) << QByteArray(name);
		}
	}
	void exportsWhatObsLooksUp()
	{
		QFETCH(QByteArray, name);
		QVERIFY(load());
		QVERIFY(entryPoint<void()>(name.constData()));
	}

	void describesItself()
	{
		QVERIFY(load());
		QCOMPARE(entryPoint<uint32_t()>("obs_module_ver")(), 0x1F010001U);
		QCOMPARE(entryPoint<const char *()>("obs_module_name")(), "Kestrune");
		QCOMPARE(entryPoint<const char *()>("obs_module_description")(),
			 "Kestrune: press a hotkey, get a captioned vertical Short of the last 30-120 seconds.");
	}

	void remembersItsModuleHandle()
	{
		QVERIFY(load());
		obs_module_t *module = entryPoint<obs_module_t *()>("obs_current_module")();
		QVERIFY(module);
		QCOMPARE(QFileInfo(QString::fromUtf8(obs_get_module_file_name(module))).completeBaseName(),
			 u"kestrune"_s);
	}

	void looksUpTextsInTheHostsLocale()
	{
		addLocale(u"en-US.ini"_s, "Greeting=\"Hello\"\nOnlyEnglish=\"Yes\"\n");
		addLocale(u"de-DE.ini"_s, "Greeting=\"Hallo\"\n");
		QVERIFY(load());
		QCOMPARE(translated("Greeting"), u"Hello"_s);

		entryPoint<void(const char *)>("obs_module_set_locale")("de-DE");
		QCOMPARE(translated("Greeting"), u"Hallo"_s);
		QCOMPARE(translated("OnlyEnglish"), u"Yes"_s);
		QVERIFY(translated("Missing").isNull());

		entryPoint<void()>("obs_module_free_locale")();
		QVERIFY(translated("Greeting").isNull());
	}

	void addsItsDockToTheMainWindow()
	{
		QVERIFY(load());
		QCOMPARE(frontend().docks.size(), 1U);
		const Frontend::Dock &added = frontend().docks.front();
		QCOMPARE(added.id, u"kestrune"_s);
		QCOMPARE(added.title, u"Kestrune"_s);
		QCOMPARE(added.parent, frontend().mainWindow);
		QCOMPARE(added.widget->objectName(), u"KestruneDock"_s);
	}

	void dockIsOneWidgetClass()
	{
		QVERIFY(load());
		QCOMPARE(dock()->metaObject()->className(), "KestruneDock");
		QCOMPARE(dock()->metaObject()->superClass(), &QWidget::staticMetaObject);
	}

	void dockHasItsMethodsInOrder()
	{
		const QByteArrayList expected{"updateStateChanged(QString,QString)",
					      "clipThat()",
					      "refreshStatus()",
					      "refreshRecent()",
					      "updateClipButton()",
					      "checkUpdate()",
					      "installUpdate()",
					      "startHotkeyCapture()",
					      "refreshPreview()",
					      "loadChat()",
					      "saveChat()",
					      "pollTriggers()",
					      "decorateChoices()",
					      "refreshHotkeyUi()",
					      "runInstaller(QString)",
					      "installerFinished(int)",
					      "pollInstaller()",
					      "connectAccount()",
					      "openFolder()",
					      "savePrefs()"};
		QVERIFY(load());
		const QMetaObject *meta = dock()->metaObject();
		QByteArrayList methods;
		for (int index = meta->methodOffset(); index < meta->methodCount(); ++index) {
			const QMetaMethod method = meta->method(index);
			methods << method.methodSignature();
			QCOMPARE(method.methodType(), methods.size() == 1 ? QMetaMethod::Signal : QMetaMethod::Slot);
		}
		QCOMPARE(methods, expected);
	}

	void addsOneCallbackOfEachKind()
	{
		QVERIFY(load());
		QCOMPARE(frontend().eventCallbacks.size(), 1U);
		QCOMPARE(frontend().eventCallbacks.front().second, nullptr);
		QCOMPARE(frontend().saveCallbacks.size(), 1U);
		QCOMPARE(frontend().saveCallbacks.front().second, nullptr);
	}

	void logsItsVersionAndTheHelper()
	{
		setEnvironment("KESTRUNE_HELPER", u"/opt/Kestrüne/100%s"_s);
		QVERIFY(load());
		// The only test that spells out the version, so that it changes on purpose only.
		const QList<LogLine> expected{
			{LOG_INFO, u"[kestrune] Kestrune loaded (version 1.0.6), helper: /opt/Kestrüne/100%s"_s}};
		QCOMPARE(obs().moduleLog(), expected);
	}

	void registersTheClipHotkey()
	{
		QVERIFY(load());
		const std::optional<HotkeyInfo> hotkey = findHotkey("kestrune.clip_that");
		QVERIFY(hotkey);
		QCOMPARE(hotkey->description, u"Kestrune: Clip that"_s);
		QCOMPARE(hotkey->registerer, OBS_HOTKEY_REGISTERER_FRONTEND);
	}

	void refusedDockFailsTheLoad()
	{
		frontend().acceptsDocks = false;
		QVERIFY(!load());

		const QList<LogLine> expected{{LOG_WARNING, u"[kestrune] could not add the Kestrune dock"_s}};
		QCOMPARE(obs().moduleLog(), expected);
		QCOMPARE(frontend().docks.size(), 1U);
		QVERIFY(!frontend().docks.front().widget);
		QVERIFY(frontend().eventCallbacks.empty());
		QVERIFY(frontend().saveCallbacks.empty());
	}

	void offersAnEmptyDock()
	{
		for (const bool accepted : {false, true}) {
			int offers = 0;
			frontend().acceptsDocks = accepted;
			frontend().onDockOffered = [&offers](const QWidget *dock) {
				++offers;
				QVERIFY(dock->children().isEmpty());
			};
			QCOMPARE(load(), accepted);
			QCOMPARE(offers, 1);
		}
	}

	void slotsCalledWhileObsTakesTheDockDoNothing()
	{
		int called = 0;
		frontend().onDockOffered = [&called](QWidget *dock) {
			const QMetaObject *meta = dock->metaObject();
			for (int index = meta->methodOffset(); index < meta->methodCount(); ++index) {
				const QMetaMethod method = meta->method(index);
				if (method.methodType() != QMetaMethod::Slot) {
					continue;
				}
				++called;
				if (method.parameterCount() == 0) {
					QVERIFY(method.invoke(dock, Qt::DirectConnection));
				} else if (method.parameterType(0) == QMetaType::Int) {
					QVERIFY(method.invoke(dock, Qt::DirectConnection, Q_ARG(int, 0)));
				} else {
					QVERIFY(method.invoke(dock, Qt::DirectConnection, Q_ARG(QString, u"x"_s)));
				}
			}
		};
		QVERIFY(load());
		QCOMPARE(called, 19);
		QVERIFY(helper().runs().isEmpty());
		QVERIFY(preferences().isEmpty());
		QVERIFY(statusIs(u"Starting…"_s, informationColour));
	}

	void refusedDockLeavesAHotkeyThatDoesNothing()
	{
		frontend().acceptsDocks = false;
		frontend().replayBufferActive = true;
		QVERIFY(!load());
		QVERIFY(findHotkey("kestrune.clip_that"));

		pressHotkey("kestrune.clip_that", true);
		QTest::qWait(100);
		QCOMPARE(frontend().saveRequests, 0);
		QVERIFY(helper().runs().isEmpty());
	}

	void unloadTakesItsCallbacksAndHotkeyBack()
	{
		QVERIFY(load());
		entryPoint<void()>("obs_module_unload")();
		QVERIFY(frontend().eventCallbacks.empty());
		QVERIFY(frontend().saveCallbacks.empty());
		QVERIFY(!findHotkey("kestrune.clip_that"));
		QVERIFY(dock());
	}

	void lateEventsAfterUnloadDoNothing()
	{
		QVERIFY(loadReady());
		frontend().lastReplay = "/replay.mkv";
		invoke("clipThat");
		const auto eventCallback = frontend().eventCallbacks.front();
		const QString text = status()->text();

		entryPoint<void()>("obs_module_unload")();
		for (const obs_frontend_event event :
		     {OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED, OBS_FRONTEND_EVENT_REPLAY_BUFFER_STOPPED,
		      OBS_FRONTEND_EVENT_REPLAY_BUFFER_STARTED}) {
			eventCallback.first(event, eventCallback.second);
		}

		QCOMPARE(status()->text(), text);
		QCOMPARE(frontend().lastReplayQueries, 0);
	}

	void loadsAgainAfterShutdown()
	{
		QVERIFY(load());
		cleanup();
		init();
		QVERIFY(load());
		QCOMPARE(frontend().docks.size(), 1U);
		QVERIFY(findHotkey("kestrune.clip_that"));
	}
};

KESTRUNE_TEST(ModuleTest)
#include "module.moc"
