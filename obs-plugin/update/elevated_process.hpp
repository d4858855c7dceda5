#pragma once

#include <QString>

#include <memory>
#include <optional>

/// A program running with administrator rights. Owns the process handle and closes it exactly once; closing does not
/// end the program.
class ElevatedProcess {
public:
	explicit ElevatedProcess(void *handle)
		: handle_(handle)
	{
	}
	// NOLINTNEXTLINE(performance-trivially-destructible): not on Windows, where there is a handle to close.
	~ElevatedProcess();
	ElevatedProcess(const ElevatedProcess &) = delete;
	ElevatedProcess &operator=(const ElevatedProcess &) = delete;

	/// The exit code, or nothing while the program runs. Never waits. 1 when the system will not tell the code.
	std::optional<int> exitCode() const;

private:
	[[maybe_unused]] void *handle_{nullptr};
};

/// A started program, or the system's error code when there is none.
struct ElevatedStart {
	std::unique_ptr<ElevatedProcess> process{};
	quint32 error{0};
};

/// Starts `program` hidden and with administrator rights, which asks the user. Blocks until the user has answered.
/// Where the system knows no such start, it fails with error code 0.
ElevatedStart startElevated(const QString &program, const QString &parameters);
