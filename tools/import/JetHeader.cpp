#include "JetHeader.h"

#include <QtEndian>

#include <array>

namespace JetHeader {
namespace {
constexpr int maskedStart = 0x18;
constexpr int maskedSize = 0x80;
constexpr int versionOffset = 0x14;
constexpr int keyOffset = 0x3e;
constexpr int passwordOffset = 0x42;
// Jet 3 keeps 20 bytes of password; Jet 4 20 two-byte characters.
constexpr int jet3PasswordSize = 20;
constexpr int jet4PasswordChars = 20;

const QByteArray &headerKey()
{
    static const QByteArray key("\xc7\xda\x39\x6b", 4);
    return key;
}

// Jet 4 masks every other character once more, with a value taken from the creation date, so
// an empty password shows as that value in the even places and zero in the odd ones.
bool jet4HasPassword(const QByteArray &header)
{
    const auto charAt = [&header](int i) {
        return qFromLittleEndian<quint16>(header.constData() + passwordOffset + 2 * i);
    };
    for (int i = 0; i < jet4PasswordChars; ++i) {
        if (i % 2 == 1 && charAt(i) != 0)
            return true;
        if (i % 2 == 0 && charAt(i) != charAt(0))
            return true;
    }
    return false;
}
} // namespace

QByteArray rc4(const QByteArray &key, const QByteArray &bytes)
{
    std::array<unsigned char, 256> s{};
    for (int i = 0; i < 256; ++i)
        s[std::size_t(i)] = static_cast<unsigned char>(i);
    unsigned j = 0;
    for (unsigned i = 0; i < 256; ++i) {
        j = (j + s[i] + static_cast<unsigned char>(key[qsizetype(i % unsigned(key.size()))])) &
            0xff;
        std::swap(s[i], s[j]);
    }
    QByteArray out = bytes;
    unsigned a = 0;
    j = 0;
    for (char &c : out) {
        a = (a + 1) & 0xff;
        j = (j + s[a]) & 0xff;
        std::swap(s[a], s[j]);
        c = static_cast<char>(static_cast<unsigned char>(c) ^ s[(s[a] + s[j]) & 0xff]);
    }
    return out;
}

std::optional<Protection> protectionOf(const QByteArray &firstPage)
{
    if (firstPage.size() < headerSize)
        return std::nullopt;
    QByteArray header = firstPage.left(maskedStart);
    header += rc4(headerKey(), firstPage.mid(maskedStart, maskedSize));
    Protection p;
    p.jet4 = header[versionOffset] != 0;
    p.encoded = qFromLittleEndian<quint32>(header.constData() + keyOffset) != 0;
    if (p.jet4) {
        p.password = jet4HasPassword(header);
    } else {
        for (int i = 0; i < jet3PasswordSize; ++i)
            if (header[passwordOffset + i] != 0)
                p.password = true;
    }
    return p;
}

} // namespace JetHeader
