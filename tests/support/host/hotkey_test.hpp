#pragma once

#include <QObject>

#include "host/obs_session.hpp"
#include "hotkey/clip_hotkey.hpp"

#include <optional>

/// A test with a fresh libobs and the clip hotkey registered, without the module, for each test function.
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
