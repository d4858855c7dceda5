#pragma once

#include <QImage>
#include <QString>

/// The picture in the file at `path`, as large as fits into `room_px`. Null when that is no picture, or one that would
/// hold up OBS: not a regular file of this computer, larger than a preview of a Short can be, or of a format that is
/// drawn rather than decoded. User-interface thread.
QImage readPreviewPicture(const QString &path, QSize room_px);
