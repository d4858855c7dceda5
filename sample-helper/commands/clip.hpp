#pragma once

class QCommandLineParser;

/// --process: makes a vertical Short of the last seconds of a replay and sends "done" or "pending". The replay is only
/// ever read. Throws Failure, after which nothing half-made is left behind.
int runProcess(const QCommandLineParser &parser);
