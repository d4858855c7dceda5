#pragma once

class QObject;
class QProcess;

/// A new child of `parent`, not yet started, whose program will show no window.
QProcess *hiddenProcess(QObject *parent);
