#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

/// The steps of one run of the fake helper, which then exits with code 0.
class HelperScript {
public:
	HelperScript &event(const QJsonObject &event);
	HelperScript &write(const QByteArray &bytes);
	HelperScript &complain(const QByteArray &bytes);
	/// Waits for FakeHelper::open(gate).
	HelperScript &await(const QString &gate);
	/// Says that the run has come this far: FakeHelper::isOpen(gate).
	HelperScript &open(const QString &gate);
	/// Writes `bytes` repeatedly until the pipe closes.
	HelperScript &flood(const QByteArray &bytes);
	HelperScript &repeat(const QByteArray &bytes, int count);
	/// Closes standard output but keeps running.
	HelperScript &closeOutput();
	HelperScript &hang();
	HelperScript &crash();
	HelperScript &exit(int code);

	const QJsonArray &steps() const { return steps_; }

private:
	HelperScript &add(const QString &action, QJsonObject step = {});

	QJsonArray steps_{};
};

/// While it lives, KESTRUNE_HELPER names a program that follows scripts and records its runs.
class FakeHelper {
public:
	FakeHelper();
	~FakeHelper();
	Q_DISABLE_COPY_MOVE(FakeHelper)

	/// Scripts future runs of this command ("--status").
	void on(const QString &command, const HelperScript &script) const;
	/// Releases runs that wait for this gate.
	void open(const QString &gate) const;
	/// Whether a run, or the test, has opened this gate.
	bool isOpen(const QString &gate) const;

	/// The arguments of the runs so far, in order; optionally of one command.
	QList<QStringList> runs(const QString &command = {}) const;
	qsizetype count(const QString &command) const { return runs(command).size(); }
	QList<qint64> processIds(const QString &command) const;
	/// What the runs recorded; all runs if no command is given.
	QList<QJsonObject> records(const QString &command) const;

private:
	QTemporaryDir folder_{};
};
