#pragma once

#include <QString>

#include <memory>
#include <optional>

/// A program running with administrator rights. Owns the process handle; closing it does not end the program.
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

	/// The exit code, or nothing while the program runs; 1 if the system will not tell. Does not block.
	std::optional<int> exitCode() const;

private:
	[[maybe_unused]] void *handle_{nullptr};
};

/// The started program, or the system's error code.
struct ElevatedStart {
	std::unique_ptr<ElevatedProcess> process{};
	quint32 error{0};
};

/// Starts `program` hidden with administrator rights. Blocks until the user has answered the prompt. Fails with error
/// code 0 on systems without such a prompt.
ElevatedStart startElevated(const QString &program, const QString &parameters);
