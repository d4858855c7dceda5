#pragma once

#include <span>

class QCommandLineParser;

/// One thing that a run can do: its switch is the name behind two dashes.
struct Command {
	/// The heading under which --help tells it.
	const char *group{};
	const char *name{};
	/// What its value stands for; empty for a command without one.
	const char *value{};
	/// What words may follow; empty if none may.
	const char *words{};
	/// What --help says of it.
	const char *summary{};
	/// Answers the exit code; may throw Failure.
	int (*run)(const QCommandLineParser &){};
};

/// All commands in the order of --help, those of a group side by side.
std::span<const Command> commands();

/// A switch that goes with a command.
struct Option {
	const char *name{};
	/// What its value stands for; empty for an option without one.
	const char *value{};
	/// What --help says of it.
	const char *summary{};
};

/// The choices that --process and --preview take.
std::span<const Option> lookOptions();

/// The options of single commands.
std::span<const Option> otherOptions();
