#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Vl/HAL/Fpga/CoreLayout.h"

/// Layouts as open streams, of whose reading everything is logged.
class LayoutStreams : public BoardWorld {
protected:
    using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;

    LayoutStreams() { logUpTo(Valen::Log::SeverityLevel::DEBUG); }

    /// A file; one can seek behind its end.
    static Stream file(const std::string& bytes) {
        Stream stream(std::tmpfile(), &std::fclose);
        std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
        std::rewind(stream.get());
        return stream;
    }

    /// A stream in which one cannot seek behind the end.
    static Stream memory(std::string& bytes) {
        return {fmemopen(bytes.data(), bytes.size(), "r"), &std::fclose};
    }

    /// Reads word n whatever the version.
    static int read(const Stream& stream, const char* name, int n, unsigned int& word) {
        return Valen::HAL::getPldCoreInfo(stream.get(), name, &word, n, 1, -1, -1);
    }
    static int read(const Stream& stream, const char* name, int n) {
        unsigned int word = 0;
        return read(stream, name, n, word);
    }

    const std::string twoCores =
        core("first", {0x00010002, 0x12345678}) + core("second", {0x03, 0x40, 0x80, 0xFFFEFDFC});
};
