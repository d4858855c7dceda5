#pragma once

#include <QByteArray>

// Compressed pictures may hold what takes decoders far more time and memory than the picture itself. These drop or
// refuse that.

/// The chunks of a PNG that make its picture: no texts, no profiles, of which libpng unpacks 8 MB each from a few
/// bytes. Empty when there are thousands of chunks, or 16 bits or interlacing on top of a large picture.
QByteArray plainPng(const QByteArray &png);

/// A JPEG without comments and application data, such as Exif. Empty when it is large, has many scans, each of which
/// goes over the whole picture, or uses arithmetic coding.
QByteArray plainJpeg(const QByteArray &jpeg);
