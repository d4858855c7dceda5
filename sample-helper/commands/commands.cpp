#include "commands/account.hpp"
#include "commands/chat.hpp"
#include "commands/clip.hpp"
#include "commands/commands.hpp"
#include "commands/doctor.hpp"
#include "commands/preview.hpp"
#include "commands/recent.hpp"
#include "commands/update.hpp"

#include <array>

std::span<const Command> commands()
{
	static constexpr const char *clips = "Clips";
	static constexpr const char *account = "Account";
	static constexpr const char *chat = "Chat command";
	static constexpr const char *updates = "Updates";
	static constexpr const char *setup = "Setting up";
	static constexpr const char *development = "For development";
	static constexpr std::array<Command, 15> all{{
		{clips, "process", "REPLAY", "", "make a Short of the end of a replay, which stays as it is",
		 runProcess},
		{clips, "preview", "", "", "draw a still picture of a look", runPreview},
		{clips, "recent", "", "", "list the newest Shorts", runRecent},
		{account, "status", "", "", "tell whether an account is linked and what can be chosen", runStatus},
		{account, "link", "", "", "link this device (pretended, nothing leaves the computer)", runLink},
		{chat, "chat-get", "", "", "tell the settings", runChatGet},
		{chat, "chat-set", "JSON", "", "change the settings", runChatSet},
		{chat, "poll-triggers", "", "", "take the uses since the last poll", runPollTriggers},
		{updates, "check-update", "", "", "tell whether another version is on offer", runCheckUpdate},
		{updates, "download-update", "", "", "fetch the installer of the version on offer", runDownloadUpdate},
		{setup, "doctor", "", "", "tell what is here, what is missing, how to get it", runDoctor},
		{development, "unlink", "", "", "forget the linked account", runUnlink},
		{development, "revoke", "", "", "as if the account's owner had revoked this device", runRevoke},
		{development, "say", "NAME", "[TEXT]", "as if NAME wrote TEXT in chat (default: the chat command)",
		 runSay},
		{development, "new-stream", "", "", "count the uses of the chat command from zero", runNewStream},
	}};
	return all;
}

std::span<const Option> lookOptions()
{
	static constexpr std::array<Option, 4> all{{
		{"layout", "KEY", "vtuber-bubble, vtuber, facecam, podcast or gameplay"},
		{"style", "KEY", "caption style: rune, neon, clean, meme or none"},
		{"font", "KEY", "bebas, montserrat, inter or bangers"},
		{"caption-position", "KEY", "auto, top, middle or bottom"},
	}};
	return all;
}

std::span<const Option> otherOptions()
{
	static constexpr std::array<Option, 3> all{{
		{"seconds", "N", "with --process: length of the Short, 1 to 3600"},
		{"scene", "NAME", "with --process: where the replay comes from (not used)"},
		{"no-browser", "", "with --link: open no browser (this helper never does)"},
	}};
	return all;
}
