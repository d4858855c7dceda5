#pragma once

#include <QByteArray>

// Compressed pictures can contain data that costs a decoder far more time and memory than the picture itself. These
// functions drop such data or refuse the picture.

/// The chunks of a PNG that make its picture: no texts, no profiles (libpng would unpack up to 8 MB from a few bytes of
/// each). Empty when there are thousands of chunks, or 16 bits or interlacing on top of a large picture.
QByteArray plainPng(const QByteArray &png);

/// A JPEG without comments and application data, such as Exif. Empty when it is large, has many scans, each of which
/// goes over the whole picture, or uses arithmetic coding.
QByteArray plainJpeg(const QByteArray &jpeg);
