#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What all fuzz targets share. Each target is one file with an LLVMFuzzerTestOneInput; libFuzzer calls it, or
// replay.cpp with the files of the target's corpus.

/// The input as bytes of its own.
QByteArray toBytes(const uint8_t *data, size_t size);

/// Takes the bytes before the next newline, and the newline, off `rest`.
QByteArray takeLine(QByteArray &rest);

/// Ends the process, and with it the run of the fuzzer, unless `holds`.
void require(bool holds, const char *what);

/// Writes a file of these bytes.
void writeFile(const QString &path, const QByteArray &bytes);

/// The bytes of a file; null when there is none.
QByteArray readFile(const QString &path);

/// From now on nothing is printed but the reason of a finding: warnings about odd inputs are expected here.
void printFindingsOnly();

/// Ends the run of the fuzzer when something has leaked. Call it for each input: it looks now and then, because a look
/// takes as long as hundreds of inputs.
void lookForLeaks();

/// Ends what the targets have started once per process. Defined by dock_host.cpp and helper_host.cpp.
void stopHost();
