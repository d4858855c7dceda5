#pragma once

#include <QObject>

#include <memory>

std::unique_ptr<QObject> makeCommandLineTest();
std::unique_ptr<QObject> makeAccountTest();
std::unique_ptr<QObject> makeSubtitlesTest();
std::unique_ptr<QObject> makeCaptionsTest();
std::unique_ptr<QObject> makeCaptionSourceTest();
std::unique_ptr<QObject> makeEncodingTest();
std::unique_ptr<QObject> makeClipTest();
std::unique_ptr<QObject> makeClipFailureTest();
std::unique_ptr<QObject> makeLeftoversTest();
std::unique_ptr<QObject> makePreviewTest();
std::unique_ptr<QObject> makeRecentTest();
std::unique_ptr<QObject> makeChatTest();
std::unique_ptr<QObject> makeUpdateTest();
