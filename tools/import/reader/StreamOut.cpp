#include "StreamOut.h"

#include <cstring>

#include <unistd.h>

namespace {
char buffer[1 << 16];

} // namespace

void StreamOut::putLittleEndian(std::uint64_t v, int bytes)
{
    unsigned char out[8];
    for (int i = 0; i < bytes; ++i)
        out[i] = static_cast<unsigned char>(v >> (8 * i));
    put(out, static_cast<std::size_t>(bytes));
}

StreamOut::StreamOut()
{
    // The library prints some of its warnings on standard output: the stream gets the real
    // standard output to itself, and whatever else is printed there goes to standard error.
    const int streamFd = ::dup(STDOUT_FILENO);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    m_out = ::fdopen(streamFd, "wb");
    std::setvbuf(m_out, buffer, _IOFBF, sizeof buffer);
}

void StreamOut::u32(std::uint32_t v)
{
    putLittleEndian(v, 4);
}

void StreamOut::i64(std::int64_t v)
{
    putLittleEndian(static_cast<std::uint64_t>(v), 8);
}

void StreamOut::f64(double v)
{
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    putLittleEndian(bits, 8);
}

void StreamOut::bytes(const void *data, std::size_t size)
{
    u32(static_cast<std::uint32_t>(size));
    put(data, size);
}
