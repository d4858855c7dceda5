#pragma once

#include <QString>

/// What --doctor prints: a line for each thing that was looked at, at once, since looking takes its time.
class Report {
public:
	void heading(const QString &text);

	/// It is as it should be.
	void ok(const QString &text);

	/// Neither good nor bad.
	void remark(const QString &text);

	/// Shorts can be made without it. `remedy` is the command or the address that mends it.
	void missing(const QString &text, const QString &remedy);

	/// It is there, but not as it should be. Shorts can still be made.
	void wrong(const QString &text, const QString &remedy);

	/// No Short can be made.
	void problem(const QString &text, const QString &remedy);

	/// Prints the verdict.
	void conclude();

	bool canMakeShorts() const { return problems_ == 0; }

private:
	void line(const QString &mark, const QString &text, const QString &remedy);

	int improvable_{0};
	int problems_{0};
};
