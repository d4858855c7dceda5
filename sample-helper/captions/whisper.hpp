#pragma once

#include <QString>

/// Where whisper.cpp's program and its model are.
namespace whisper {
/// The folders in the state folder that both are looked for in, if nothing says otherwise.
QString programFolder();
QString modelFolder();

/// The program: the one that is set, else whisper-cli in the PATH, else in programFolder(). Empty when there is none.
QString program();

/// The model: the one that is set, whether it exists or not, else the largest file ggml-*.bin in modelFolder(), since
/// it understands most. Empty when there is none.
QString model();

/// Whether a file begins as models do. A truncated download passes as well.
bool looksLikeModel(const QString &path);
} // namespace whisper
