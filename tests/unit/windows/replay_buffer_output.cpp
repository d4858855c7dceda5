#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

#include "fake_frontend/fake_frontend.hpp"
#include "replay_buffer_output.hpp"

#include <windows.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {
constexpr uint32_t framesPerSecond = 30;
constexpr QSize canvas_px(640, 360);

/// A file or folder that OBS brings.
QByteArray ofObs(const QString &name)
{
	std::array<wchar_t, MAX_PATH> library{};
	GetModuleFileNameW(GetModuleHandleW(L"obs"), library.data(), MAX_PATH);
	const QFileInfo file(QString::fromWCharArray(library.data()));
	return QDir(file.absolutePath() + u"/.."_s).absoluteFilePath(name).toUtf8();
}

/// OBS finds its effects by the folder that it is started in; nobody else has a better way than this one.
void addEffects()
{
	QT_WARNING_PUSH
	QT_WARNING_DISABLE_DEPRECATED
	obs_add_data_path(ofObs(u"data/effects/"_s).constData());
	QT_WARNING_POP
}

void startVideoAndAudio()
{
	// libobs unloads it at its end, and it cannot be loaded twice: the class of its window stays.
	LoadLibraryW(L"libobs-opengl.dll");
	addEffects();
	const obs_audio_info audio{.samples_per_sec = 48000, .speakers = SPEAKERS_STEREO};
	obs_video_info video{};
	video.graphics_module = "libobs-opengl.dll"; // Wine lacks what Direct3D's asks of it
	video.fps_num = framesPerSecond;
	video.fps_den = 1;
	video.base_width = video.output_width = canvas_px.width();
	video.base_height = video.output_height = canvas_px.height();
	video.output_format = VIDEO_FORMAT_NV12;
	video.colorspace = VIDEO_CS_709;
	video.range = VIDEO_RANGE_PARTIAL;
	video.scale_type = OBS_SCALE_BILINEAR;
	video.gpu_conversion = true;
	if (!obs_reset_audio(&audio) || obs_reset_video(&video) != OBS_VIDEO_SUCCESS) {
		qFatal("libobs starts neither video nor audio here");
	}
}

void loadModule(const QString &name)
{
	obs_module_t *module = nullptr;
	const QByteArray data = ofObs(u"data/obs-plugins/"_s + name);
	if (obs_open_module(&module, ofObs(u"obs-plugins/"_s + name + u".dll"_s).constData(), data.constData()) !=
		    MODULE_SUCCESS ||
	    !obs_init_module(module)) {
		qFatal("OBS's module %s does not load", qUtf8Printable(name));
	}
}

/// A game, and a player at the lower right where the layouts look for the camera; the path of the file.
QByteArray drawPicture(const QString &folder)
{
	QImage image(canvas_px, QImage::Format_RGB32);
	QPainter painter(&image);
	QLinearGradient sky(0, 0, canvas_px.width(), canvas_px.height());
	sky.setColorAt(0, QColor(27, 42, 74));
	sky.setColorAt(0.5, QColor(47, 111, 94));
	sky.setColorAt(1, QColor(106, 61, 124));
	painter.fillRect(image.rect(), sky);
	painter.fillRect(448, 198, 192, 162, QColor(217, 138, 61));
	painter.setPen(Qt::white);
	painter.setFont({u"DejaVu Sans"_s, 24});
	painter.drawText(image.rect().adjusted(0, 0, 0, -120), Qt::AlignCenter, u"game"_s);
	painter.drawText(QRect(448, 198, 192, 162), Qt::AlignCenter, u"camera"_s);
	painter.end();
	const QString path = QDir(folder).filePath(u"picture.png"_s);
	if (!image.save(path)) {
		qFatal("cannot write %s", qUtf8Printable(path));
	}
	return path.toUtf8();
}

/// Not long, so that a slow machine has not much to encode.
OBSDataAutoRelease outputSettings(const QString &folder)
{
	obs_data_t *settings = obs_data_create();
	obs_data_set_string(settings, "directory", folder.toUtf8().constData());
	obs_data_set_string(settings, "format", "Replay %CCYY-%MM-%DD %hh-%mm-%ss");
	obs_data_set_string(settings, "extension", "mkv");
	obs_data_set_bool(settings, "allow_spaces", true);
	obs_data_set_int(settings, "max_time_sec", 20);
	obs_data_set_int(settings, "max_size_mb", 200);
	return settings;
}
} // namespace

ReplayBufferOutput::ReplayBufferOutput(const QString &folder)
{
	startVideoAndAudio();
	for (const QString &name : {u"obs-x264"_s, u"obs-ffmpeg"_s, u"image-source"_s}) {
		loadModule(name);
	}

	const OBSDataAutoRelease image = obs_data_create();
	obs_data_set_string(image, "file", drawPicture(folder).constData());
	picture_ = obs_source_create("image_source", "picture", image, nullptr);
	obs_set_output_source(0, picture_);
	video_ = obs_video_encoder_create("obs_x264", "video", nullptr, nullptr);
	obs_encoder_set_video(video_, obs_get_video());
	audio_ = obs_audio_encoder_create("ffmpeg_aac", "audio", nullptr, 0, nullptr);
	obs_encoder_set_audio(audio_, obs_get_audio());

	output_ = obs_output_create("replay_buffer", "replay", outputSettings(folder), nullptr);
	obs_output_set_video_encoder(output_, video_);
	obs_output_set_audio_encoder(output_, audio_, 0);
	saved_.Connect(
		obs_output_get_signal_handler(output_), "saved",
		[](void *self, calldata_t *) { static_cast<ReplayBufferOutput *>(self)->onSaved(); }, this);
	frontend().onSaveRequest = [this] { save(); };
	frontend().replayBufferActive = obs_output_start(output_);
}

ReplayBufferOutput::~ReplayBufferOutput()
{
	frontend().onSaveRequest = nullptr;
	obs_output_force_stop(output_);
	saved_.Disconnect();
	output_ = nullptr;
	obs_set_output_source(0, nullptr);
}

int ReplayBufferOutput::recorded_s() const
{
	return obs_output_get_total_frames(output_) / static_cast<int>(framesPerSecond);
}

void ReplayBufferOutput::save() const
{
	calldata_t call{};
	proc_handler_call(obs_output_get_proc_handler(output_), "save", &call);
	calldata_free(&call);
}

void ReplayBufferOutput::onSaved()
{
	// As OBS does: it tells of the file on the user-interface thread.
	QMetaObject::invokeMethod(
		this,
		[this] {
			frontend().lastReplay = lastReplay();
			frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		},
		Qt::QueuedConnection);
}

QByteArray ReplayBufferOutput::lastReplay() const
{
	calldata_t call{};
	proc_handler_call(obs_output_get_proc_handler(output_), "get_last_replay", &call);
	const QByteArray path(calldata_string(&call, "path"));
	calldata_free(&call);
	return path;
}
