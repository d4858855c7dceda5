#pragma once

#include <QString>
#include <QStringList>

/// The size of a Short.
inline constexpr int shortWidth_px = 1080;
inline constexpr int shortHeight_px = 1920;

/// A part of a picture, in fractions of its width and height.
struct Region {
	double x{0};
	double y{0};
	double width{0};
	double height{0};
};

/// Keys of the layouts in the order to offer them.
QStringList layoutKeys();

/// The part of the stream's picture that holds the camera: KESTRUNE_SAMPLE_HELPER_CAMERA ("x,y,width,height" as
/// fractions of the picture), else a place in the lower right corner that suits the layout. A setting that is no such
/// part is mentioned in `notes` when the layout shows the camera.
Region cameraRegion(const QString &layout, QStringList &notes);

/// The ffmpeg filter graph that turns the video labelled [source] into one of 1080x1920. Its last filter has no label:
/// more can follow after a comma. `key` must be one of layoutKeys().
QString layoutGraph(const QString &key, const Region &camera);

/// Where a caption is out of the way in a layout: its middle, in fractions of the height of the Short.
double layoutCaptionHeight(const QString &key);
