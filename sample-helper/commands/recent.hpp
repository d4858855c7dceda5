#pragma once

class QCommandLineParser;

/// --recent: sends "recent" with the output folder and its newest Shorts, at most ten, newest first.
int runRecent(const QCommandLineParser &);
