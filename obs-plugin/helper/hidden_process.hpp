#pragma once

class QObject;
class QProcess;

/// A new process object, child of `parent`, that will start its program without showing a window. Not started yet.
QProcess *hiddenProcess(QObject *parent);
