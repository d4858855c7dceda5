#pragma once

#include <QFile>

#include <memory>

/// A place in the queue of clips, released when the object is destroyed: each takes all of the processor that OBS and a
/// game leave, so they are made one after the other (as many at a time as environment::clipsAtOnce() says), first come,
/// first served. Runs that were killed wait no longer and hold nobody up.
class ClipTurn {
public:
	/// Waits until it is this clip's turn, and says so in the log. One that cannot queue, or has waited for
	/// environment::queueLimit_ms(), starts anyway: late or beside others is better than never.
	ClipTurn();
	~ClipTurn();
	Q_DISABLE_COPY_MOVE(ClipTurn)

private:
	std::unique_ptr<QFile> ticket_{};
};
