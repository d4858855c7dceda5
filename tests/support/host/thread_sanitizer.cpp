#include <pthread.h>

#include <chrono>
#include <ctime>

namespace {
std::chrono::nanoseconds now(clockid_t clock)
{
	timespec time{};
	clock_gettime(clock, &time);
	return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}
} // namespace

// Qt joins its threads with this function, which ThreadSanitizer doesn't know: it would think that they still run, and
// abort as soon as the C library gives the id of one to a new thread. So Qt gets this definition instead.
extern "C" __attribute__((visibility("default"))) int pthread_clockjoin_np(pthread_t thread, void **result,
									   clockid_t clock, const timespec *limit)
{
	if (!limit) {
		return pthread_join(thread, result);
	}
	const std::chrono::nanoseconds left =
		std::chrono::seconds(limit->tv_sec) + std::chrono::nanoseconds(limit->tv_nsec) - now(clock);
	const std::chrono::nanoseconds realLimit = now(CLOCK_REALTIME) + left;
	const auto seconds = std::chrono::floor<std::chrono::seconds>(realLimit);
	const timespec realTimeLimit = {.tv_sec = seconds.count(), .tv_nsec = (realLimit - seconds).count()};
	return pthread_timedjoin_np(thread, result, &realTimeLimit);
}
