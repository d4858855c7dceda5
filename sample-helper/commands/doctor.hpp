#pragma once

class QCommandLineParser;

/// --doctor: tells a person what is here, what is missing and how to get it. Not for the dock. 0 when a Short can be
/// made, else 1.
int runDoctor(const QCommandLineParser &parser);
