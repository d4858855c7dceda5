#pragma once

class QCommandLineParser;

/// --chat-get: sends "chat" with the stored settings of the chat command.
int runChatGet(const QCommandLineParser &);

/// --chat-set: stores new settings and sends "chat"; settings that make no sense are refused with a "chat" event that
/// carries "error", and exit code 1.
int runChatSet(const QCommandLineParser &parser);

/// --poll-triggers: sends "triggers" with the uses of the chat command since the last poll, within its limits.
int runPollTriggers(const QCommandLineParser &);

/// --say: puts a message into the pretended chat and sends "said". The next poll judges it.
int runSay(const QCommandLineParser &parser);

/// --new-stream: starts counting the uses per stream from zero and sends "chat".
int runNewStream(const QCommandLineParser &);
