#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QPixmap>
#include <QProcess>
#include <QTextStream>

#include "host/dock_test.hpp"
#include "process_figures.hpp"
#include "scale.hpp"

/// Eight hours of a stream without the waiting: as many clips, polls, previews and status answers as the timers and a
/// busy streamer cause. Nothing may accumulate.
class LongStreamTest : public DockTest {
	Q_OBJECT

	bool idle() const { return dock()->findChildren<QProcess *>().isEmpty(); }

	struct Sample {
		ProcessFigures process{};
		qsizetype objects{0};
	};
	QList<Sample> samples_{};

	void takeSample() { samples_ << Sample{processFigures(), dock()->findChildren<QObject *>().size()}; }

	/// Writes the samples as a table, for a full run's graph.
	void writeSamples() const
	{
		const QString path = qEnvironmentVariable("KESTRUNE_SOAK_TABLE");
		if (path.isEmpty()) {
			return;
		}
		QFile file(path);
		QVERIFY(file.open(QIODevice::WriteOnly));
		QTextStream table(&file);
		table << "memory_KiB,file_descriptors,objects,child_processes\n";
		for (const Sample &sample : samples_) {
			table << sample.process.memory_KiB << ',' << sample.process.fileDescriptors << ','
			      << sample.objects << ',' << sample.process.childProcesses << '\n';
		}
	}

private Q_SLOTS:
	void pilesNothingUp()
	{
		const QString picture = scratchPath(u"preview.png"_s);
		QPixmap pixmap(270, 480);
		pixmap.fill(Qt::darkGreen);
		QVERIFY(pixmap.save(picture));

		frontend().lastReplay = "/replays/a.mkv";
		QVERIFY(loadReady());
		QJsonObject status = linkedStatus();
		status[u"layouts"] = QJsonArray{u"gameplay"_s, u"podcast"_s, u"facecam"_s};
		status[u"styles"] = QJsonArray{u"clean"_s, u"neon"_s};
		status[u"fonts"] = QJsonArray{u"inter"_s, u"bebas"_s};
		helper().on(u"--status"_s, HelperScript().event(status));
		helper().on(u"--chat-get"_s, HelperScript().event({{u"event"_s, u"chat"_s},
								   {u"enabled"_s, true},
								   {u"granted"_s, true},
								   {u"command"_s, u"!rune"_s}}));
		helper().on(u"--poll-triggers"_s,
			    HelperScript().event({{u"event"_s, u"triggers"_s}, {u"triggers"_s, QJsonArray()}}));
		helper().on(u"--preview"_s, HelperScript().event({{u"event"_s, u"preview"_s}, {u"path"_s, picture}}));
		helper().on(u"--process"_s, HelperScript().event({{u"event"_s, u"done"_s},
								  {u"formatted"_s, QJsonArray{u"/shorts/a.mp4"_s}}}));
		const QJsonObject clip{{u"path"_s, u"/shorts/a.mp4"_s}, {u"name"_s, u"a.mp4"_s}};
		helper().on(u"--recent"_s, HelperScript().event({{u"event"_s, u"recent"_s},
								 {u"folder"_s, u"/shorts"_s},
								 {u"items"_s, QJsonArray{clip, clip, clip}}}));

		const int rounds = scaled(1000);
		for (int round = 0; round < rounds; ++round) {
			for (int times = 0; times < 2; ++times) {
				QVERIFY(invoke("refreshStatus"));
			}
			QTRY_VERIFY(idle());
			for (int times = 0; times < 5; ++times) {
				QVERIFY(invoke("clipThat"));
				frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
			}
			for (int times = 0; times < 10; ++times) {
				QVERIFY(invoke("refreshPreview"));
			}
			for (int times = 0; times < 20; ++times) {
				QVERIFY(invoke("pollTriggers"));
				QTRY_VERIFY(!isRunning(u"--poll-triggers"_s));
			}
			QTRY_VERIFY(idle());
			if (round % qMax(1, rounds / 100) == 0) {
				takeSample();
			}
		}
		takeSample();
		writeSamples();

		// Caches fill during the first quarter.
		const Sample &warm = samples_[samples_.size() / 4];
		const Sample &last = samples_.back();
		qInfo("%d clips, %d polls, %d previews, %d status answers: memory %lld to %lld KiB, file descriptors %lld "
		      "to %lld, objects %lld to %lld",
		      5 * rounds, 20 * rounds, 10 * rounds, 2 * rounds, static_cast<long long>(warm.process.memory_KiB),
		      static_cast<long long>(last.process.memory_KiB),
		      static_cast<long long>(warm.process.fileDescriptors),
		      static_cast<long long>(last.process.fileDescriptors), static_cast<long long>(warm.objects),
		      static_cast<long long>(last.objects));
		QCOMPARE(helper().count(u"--process"_s), 5 * rounds);
		// At least: the dock starts some itself.
		QVERIFY(helper().count(u"--preview"_s) >= qsizetype{10} * rounds);
		QVERIFY(helper().count(u"--poll-triggers"_s) >= qsizetype{20} * rounds);
		QCOMPARE(last.process.fileDescriptors, warm.process.fileDescriptors);
		QCOMPARE(last.process.childProcesses, 0);
		QCOMPARE(last.objects, warm.objects);
		QVERIFY(last.process.memory_KiB - warm.process.memory_KiB < 4096);
	}
};

KESTRUNE_TEST(LongStreamTest)
#include "long_stream.moc"
