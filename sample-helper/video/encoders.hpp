#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The ways to make H.264 video.
struct Encoder {
	/// ffmpeg's name for it.
	QString name{};
	/// Filters that bring a frame to where the encoder wants it.
	QString filters{};
	/// Arguments in front of the inputs.
	QStringList device{};
	/// Arguments that set speed and quality.
	QStringList quality{};
};

/// All that are known, in the order to try them: those in hardware first, libx264 last.
const QList<Encoder> &encoders();

/// libx264, which works everywhere.
const Encoder &softwareEncoder();

/// Whether a frame of a Short's size goes through: an encoder that is compiled in needs its hardware and driver too.
/// Throws Failure when ffmpeg is missing.
bool canEncode(const Encoder &encoder);

/// The first encoder that this ffmpeg and this machine can use, or the one that KESTRUNE_SAMPLE_HELPER_ENCODER names.
/// An unknown name is mentioned in `notes`. Throws Failure when ffmpeg is missing.
const Encoder &chooseEncoder(QStringList &notes);
