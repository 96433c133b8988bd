#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

// Writes the reader's stream (see ReaderProtocol.h) to standard output, buffered.
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
    void flush() { std::fflush(stdout); }

private:
    void put(const void *data, std::size_t size) { std::fwrite(data, 1, size, stdout); }
};
