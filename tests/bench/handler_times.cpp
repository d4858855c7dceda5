// Preloaded into OBS: measures how long each event blocks the user-interface thread, by replacing QApplication::notify.
// Nested events count for the outermost one. Two calls are counted separately: starting the Replay Buffer, which is
// OBS's own work, and reading a preview. At exit, one JSON line per kind of event goes to the file HANDLER_TIMES_FILE.

#include <QApplication>
#include <QEvent>
#include <QImageReader>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaEnum>
#include <QPointerEvent>
#include <QThread>
#include <QWidget>

#include <dlfcn.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {
using Notify = bool (*)(QApplication *, QObject *, QEvent *);
using StartReplayBuffer = void (*)();
using ReadImage = QImage (*)(QImageReader *);

struct Kind {
	bool inDock{false};
	QByteArray receiver{};
	/// A QEvent::Type. QMetaEnum takes a quint64 since Qt 6.9 and an int before; this converts to both.
	quint16 event{0};

	auto operator<=>(const Kind &) const = default;
};

struct Times {
	qint64 count{0};
	qint64 longest_ns{0};
	/// CPU time of the thread, which other programs cannot lengthen.
	qint64 maxProcessor_ns{0};
	qint64 totalProcessor_ns{0};
};

/// Never destroyed, because it is read after everything else is.
std::map<Kind, Times> &kinds()
{
	static auto *const all = new std::map<Kind, Times>;
	return *all;
}

qint64 now_ns(clockid_t clock)
{
	timespec now{};
	clock_gettime(clock, &now);
	return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

struct Moment {
	qint64 time_ns{now_ns(CLOCK_MONOTONIC)};
	qint64 processor_ns{now_ns(CLOCK_THREAD_CPUTIME_ID)};
};

struct Span {
	qint64 time_ns{0};
	qint64 processor_ns{0};
};

Span since(const Moment &begin)
{
	const Moment now;
	return {now.time_ns - begin.time_ns, now.processor_ns - begin.processor_ns};
}

/// What was counted separately during the current event.
Span &countedMeanwhile()
{
	static Span span;
	return span;
}

void count(const Kind &kind, const Span &held)
{
	Times &times = kinds()[kind];
	++times.count;
	times.longest_ns = std::max(times.longest_ns, held.time_ns);
	times.maxProcessor_ns = std::max(times.maxProcessor_ns, held.processor_ns);
	times.totalProcessor_ns += held.processor_ns;
}

void countSeparately(const char *call, const Span &held)
{
	countedMeanwhile().time_ns += held.time_ns;
	countedMeanwhile().processor_ns += held.processor_ns;
	count({false, call}, held);
}

bool isInModule(const void *address)
{
	Dl_info info{};
	return dladdr(address, &info) != 0 && QByteArrayView(info.dli_fname).endsWith("/kestrune.so");
}

/// Whether it belongs to the module: one of its widgets, or an object of one of its classes.
bool isInDock(const QObject *object)
{
	// The class is known by its table of virtual functions.
	if (isInModule(*reinterpret_cast<void *const *>(object))) {
		return true;
	}
	// OBS names the window around the dock after the dock's id.
	while (object && !object->objectName().startsWith(u"kestrune", Qt::CaseInsensitive)) {
		object = object->parent();
	}
	return object;
}

/// For a window, the widget under the mouse.
QByteArray describe(const QObject *receiver, const QEvent *event)
{
	QByteArray text = receiver->metaObject()->className() + (' ' + receiver->objectName().toLatin1());
	if (receiver->isWindowType() && event->isSinglePointEvent()) {
		const QPoint position = static_cast<const QSinglePointEvent *>(event)->globalPosition().toPoint();
		if (const QWidget *widget = QApplication::widgetAt(position)) {
			text += " on " + describe(widget, event);
		}
	}
	return text;
}

/// Keeps programs that OBS starts from being measured.
__attribute__((constructor)) void keepToThisProgram()
{
	unsetenv("LD_PRELOAD");
}

__attribute__((destructor)) void report()
{
	const char *path = std::getenv("HANDLER_TIMES_FILE");
	FILE *file = path && !kinds().empty() ? std::fopen(path, "w") : nullptr;
	if (!file) {
		return;
	}
	const auto events = QMetaEnum::fromType<QEvent::Type>();
	for (const auto &[kind, times] : kinds()) {
		const QJsonObject line{{u"inDock"_s, kind.inDock},
				       {u"receiver"_s, QString::fromLatin1(kind.receiver)},
				       {u"event"_s, QString::fromLatin1(events.valueToKey(kind.event))},
				       {u"count"_s, times.count},
				       {u"longest_ms"_s, static_cast<double>(times.longest_ns) / 1e6},
				       {u"maxProcessor_ms"_s, static_cast<double>(times.maxProcessor_ns) / 1e6},
				       {u"totalProcessor_ms"_s, static_cast<double>(times.totalProcessor_ns) / 1e6}};
		std::fprintf(file, "%s\n", QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
	}
	std::fclose(file);
}
} // namespace

bool QApplication::notify(QObject *receiver, QEvent *event)
{
	static const auto original =
		reinterpret_cast<Notify>(dlsym(RTLD_NEXT, "_ZN12QApplication6notifyEP7QObjectP6QEvent"));
	static int depth = 0;

	if (QThread::currentThread() != thread() || depth > 0) {
		return original(this, receiver, event);
	}

	// Receiver and event may be gone after the call.
	const Kind kind{isInDock(receiver), describe(receiver, event), static_cast<quint16>(event->type())};
	++depth;
	countedMeanwhile() = {};
	const Moment begin;
	const bool result = original(this, receiver, event);
	Span held = since(begin);
	held.time_ns -= countedMeanwhile().time_ns;
	held.processor_ns -= countedMeanwhile().processor_ns;
	--depth;
	count(kind, held);
	return result;
}

extern "C" __attribute__((visibility("default"))) void obs_frontend_replay_buffer_start()
{
	static const auto original =
		reinterpret_cast<StartReplayBuffer>(dlsym(RTLD_NEXT, "obs_frontend_replay_buffer_start"));
	if (QThread::currentThread() != qApp->thread()) {
		return original();
	}

	const Moment begin;
	original();
	countSeparately("obs_frontend_replay_buffer_start", since(begin));
}

QImage QImageReader::read()
{
	static const auto original = reinterpret_cast<ReadImage>(dlsym(RTLD_NEXT, "_ZN12QImageReader4readEv"));
	if (!isInModule(__builtin_return_address(0))) {
		return original(this);
	}

	const Moment begin;
	QImage image = original(this);
	countSeparately("QImageReader::read", since(begin));
	return image;
}
