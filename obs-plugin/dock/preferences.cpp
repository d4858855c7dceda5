#include <QComboBox>

#include "dock/choice_tables.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/preferences_file.hpp"

namespace {
QString stringOf(obs_data_t *data, const char *key)
{
	return QString::fromUtf8(obs_data_get_string(data, key));
}

void setString(obs_data_t *data, const char *key, const QString &value)
{
	obs_data_set_string(data, key, value.toUtf8().constData());
}
} // namespace

void KestruneDock::loadPrefs()
{
	const OBSDataAutoRelease preferences = readPreferences();
	if (!preferences)
		return;

	// A file by hand may hold any number: only its low 32 bits count.
	const auto length_s = static_cast<int>(obs_data_get_int(preferences, "seconds"));
	const int index = secondsBox_->findData(length_s);
	secondsBox_->setCurrentIndex(index >= 0 ? index : secondsBox_->findData(defaultClipLength_s));

	preferredLayout_ = stringOf(preferences, "layout");
	preferredStyle_ = stringOf(preferences, "style");
	preferredFont_ = stringOf(preferences, "font");
	selectByKey(layoutBox_, preferredLayout_);
	selectByKey(styleBox_, preferredStyle_);
	selectByKey(fontBox_, preferredFont_);
	selectByKey(positionBox_, stringOf(preferences, "caption_position"));
}

void KestruneDock::savePrefs()
{
	preferredLayout_ = currentKey(layoutBox_);
	preferredStyle_ = currentKey(styleBox_);
	preferredFont_ = currentKey(fontBox_);

	updatePreferences([this](obs_data_t *preferences) {
		obs_data_set_int(preferences, "seconds", secondsBox_->currentData().toInt());
		setString(preferences, "layout", preferredLayout_);
		setString(preferences, "style", preferredStyle_);
		setString(preferences, "font", preferredFont_);
		setString(preferences, "caption_position", currentKey(positionBox_));
	});
}
