#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

// Writes the reader's stream (see ReaderProtocol.h) to standard output, buffered; one per
// process, made before anything else prints.
class StreamOut {
public:
    StreamOut();
    void tag(char t) { put(&t, 1); }
    void u8(unsigned char v) { put(&v, 1); }
    void u32(std::uint32_t v);
    void i64(std::int64_t v);
    void f64(double v);
    void text(const std::string &s) { bytes(s.data(), s.size()); }
    void bytes(const void *data, std::size_t size);
    void flush() { std::fflush(m_out); }

private:
    void put(const void *data, std::size_t size) { std::fwrite(data, 1, size, m_out); }
    void putLittleEndian(std::uint64_t v, int bytes);

    std::FILE *m_out = nullptr;
};
