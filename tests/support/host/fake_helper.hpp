#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

/// What the fake helper does in one run, step by step; it ends with code 0 after the last.
class HelperScript {
public:
	HelperScript &event(const QJsonObject &event);
	HelperScript &write(const QByteArray &bytes);
	HelperScript &complain(const QByteArray &bytes);
	/// Waits until FakeHelper::open(gate).
	HelperScript &await(const QString &gate);
	/// Writes `bytes` again and again until nobody reads them.
	HelperScript &flood(const QByteArray &bytes);
	HelperScript &repeat(const QByteArray &bytes, int count);
	/// Closes standard output; the run lives on.
	HelperScript &closeOutput();
	HelperScript &hang();
	HelperScript &crash();
	HelperScript &exit(int code);

	const QJsonArray &steps() const { return steps_; }

private:
	HelperScript &add(const QString &action, QJsonObject step = {});

	QJsonArray steps_{};
};

/// The program that KESTRUNE_HELPER names while this object lives: it follows scripts and notes its runs.
class FakeHelper {
public:
	FakeHelper();
	~FakeHelper();
	Q_DISABLE_COPY_MOVE(FakeHelper)

	/// What runs with this first switch ("--status") do from now on.
	void on(const QString &command, const HelperScript &script) const;
	/// Lets the runs go on that wait for this gate.
	void open(const QString &gate) const;

	/// The arguments of the runs so far, in order; only those with this first switch if one is named.
	QList<QStringList> runs(const QString &command = {}) const;
	qsizetype count(const QString &command) const { return runs(command).size(); }
	/// Process ids of the runs with this first switch.
	QList<qint64> processIds(const QString &command) const;
	/// What the runs with this first switch noted of themselves; all runs if none is named.
	QList<QJsonObject> records(const QString &command) const;

private:
	QTemporaryDir folder_{};
};
