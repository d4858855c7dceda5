#pragma once

#include <QImage>
#include <QString>

/// The picture in the file at `path`, as large as fits into `room_px`. Null when it cannot be read, or could hold up
/// OBS: it is no regular file, lies on another computer, is larger than the preview of a Short needs to be, or is
/// neither PNG, JPEG, BMP nor PPM. User-interface thread.
QImage readPreviewPicture(const QString &path, QSize room_px);
