#include <QJsonArray>
#include <QJsonObject>
#include <QListWidget>
#include <QTest>
#include <QVBoxLayout>

#include "chat/chat_section.hpp"
#include "clip/account.hpp"
#include "dock/choices_section.hpp"
#include "dock/recent_section.hpp"
#include "dock/status_line.hpp"
#include "host/fake_runner.hpp"
#include "host/test_program.hpp"

#include <optional>

using namespace Qt::StringLiterals;

/// Sections without dock, OBS and helper processes.
class SectionsAloneTest : public QObject {
	Q_OBJECT

	std::optional<QWidget> window_{};
	QVBoxLayout *layout_{nullptr};
	StatusLine *status_{nullptr};
	FakeRunner helper_{};

	/// Answers and ends the newest run of this command.
	void answer(const QString &command, const QByteArray &event)
	{
		const auto run = helper_.runInFlight(command);
		QVERIFY(run);
		FakeRunner::answer(*run, event + '\n');
		helper_.end(run, 0);
	}

private Q_SLOTS:
	void init()
	{
		window_.emplace();
		layout_ = new QVBoxLayout(&*window_);
		status_ = new StatusLine;
		layout_->addWidget(status_);
		helper_.setInstalled(true);
	}
	void cleanup()
	{
		window_.reset();
		QCOMPARE(helper_.count(), 0U);
	}

	void recentClips()
	{
		RecentSection recent(layout_, &*window_, helper_);
		recent.refreshRecent();
		answer(u"--recent"_s,
		       R"({"event":"recent","folder":"/s","items":[{"name":"a.mp4","path":"/s/a.mp4"}]})");
		const auto *list = window_->findChild<QListWidget *>();
		QCOMPARE(list->count(), 1);
		QCOMPARE(list->item(0)->text(), u"a.mp4"_s);
	}

	void theAccount()
	{
		QStringList calls;
		Account account(
			layout_, helper_, *status_, [&calls] { calls << u"started"_s; },
			[&calls] { calls << u"ended"_s; });
		account.connectAccount();
		account.connectAccount();
		QCOMPARE(helper_.count(), 1U);
		QVERIFY(account.isLinking());
		answer(u"--link"_s, R"({"event":"linked"})");
		QCOMPARE(calls, QStringList({u"started"_s, u"ended"_s}));
		QCOMPARE(status_->text(), u"Connected!"_s);
		QVERIFY(!account.isLinking());
		QVERIFY(!account.isLinked());

		helper_.setInstalled(false);
		account.connectAccount();
		QVERIFY(account.isLinking());
	}

	void theChatCommand()
	{
		QStringList names;
		Account account(layout_, helper_, *status_, [] {}, [] {});
		ChatSection chat(layout_, &*window_, helper_, account,
				 [&names](const QString &name) { names << name; });
		chat.loadChat();
		chat.pollTriggers();
		QCOMPARE(helper_.count(), 0U);

		account.applyStatus({{u"linked"_s, true}});
		chat.loadChat();
		answer(u"--chat-get"_s, R"({"event":"chat","enabled":true,"granted":true,"command":"!rune"})");
		chat.pollTriggers();
		chat.pollTriggers();
		QCOMPARE(helper_.count(), 1U);
		answer(u"--poll-triggers"_s, R"({"event":"triggers","triggers":[{"by":"ana"},{"by":"ben"}]})");
		QCOMPARE(names, QStringList{u"ben"_s});
	}

	void theChoices()
	{
		ChoicesSection choices(layout_, &*window_, helper_);
		choices.refill({{u"styles"_s, QJsonArray{u"neon"_s, u"own"_s}}, {u"style"_s, u"own"_s}});
		choices.decorateChoices();
		QCOMPARE(choices.choices().style, u"own"_s);
		QCOMPARE(choices.choices().length_s, 60);

		choices.refreshPreview();
		const QStringList expected{u"--preview"_s, u"--layout"_s, u"vtuber-bubble"_s, u"--style"_s,
					   u"own"_s,       u"--font"_s,   u"bebas"_s,         u"--caption-position"_s,
					   u"auto"_s};
		QCOMPARE(helper_.runInFlight(u"--preview"_s)->arguments, expected);
		answer(u"--preview"_s, R"({"event":"preview","path":"/nowhere.png"})");

		helper_.setInstalled(false);
		choices.refreshPreview();
		QCOMPARE(helper_.count(), 0U);
	}
};

KESTRUNE_TEST(SectionsAloneTest)
#include "sections_alone.moc"
