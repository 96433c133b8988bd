#pragma once

#include <QByteArray>

#include <optional>

// What the first page of an Access (Jet 3 or Jet 4) file says about how it is protected. Most
// of that page is kept under a fixed RC4 mask; under it lie the database password (masked once
// more in Jet 4 with the file's creation date) and the key with which an encoded file's pages
// are scrambled.
namespace JetHeader {

struct Protection {
    bool jet4 = false;
    bool password = false; // Access asks for a database password on opening
    bool encoded = false;  // the pages are scrambled ("Encode Database")
};

// None when the bytes are too few to hold the header.
std::optional<Protection> protectionOf(const QByteArray &firstPage);

// The number of bytes protectionOf() needs.
constexpr int headerSize = 0x98;

// RC4 applied to the bytes (the same call masks and unmasks).
QByteArray rc4(const QByteArray &key, const QByteArray &bytes);

} // namespace JetHeader
