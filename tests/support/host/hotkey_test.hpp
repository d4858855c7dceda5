#pragma once

#include <QObject>

#include "host/obs_session.hpp"
#include "hotkey/clip_hotkey.hpp"

#include <optional>

/// Each test function gets a fresh libobs with the clip hotkey, without the module.
class HotkeyTest : public QObject {
	Q_OBJECT

protected Q_SLOTS:
	void init()
	{
		obs_.emplace();
		registerClipHotkey();
	}
	void cleanup()
	{
		unregisterClipHotkey();
		obs_.reset();
	}

private:
	std::optional<ObsSession> obs_{};
};
