#pragma once

#include <cstdint>

class QCommandLineParser;

/// Whether this device counts as linked to an account.
enum class Link : std::uint8_t { Unlinked, Linked, Revoked };

/// The stored state of the link.
Link currentLink();

/// --status: sends "status" with the link, the choices in use and the choices on offer.
int runStatus(const QCommandLineParser &);

/// --link: sends "code" with a local page, waits a moment, becomes linked and sends "linked".
int runLink(const QCommandLineParser &);

/// --unlink: forgets the link, then answers as --status does.
int runUnlink(const QCommandLineParser &);

/// --revoke: marks the link as taken back by the account's owner, then answers as --status does.
int runRevoke(const QCommandLineParser &);
