// 3000 mixed values put into a message, and got back out of it.
#include <benchmark/benchmark.h>
#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "Vl/Common/Streams/InputStream.h"
#include "Vl/Common/Streams/OutputStream.h"

namespace {

using google::protobuf::io::ArrayOutputStream;
using google::protobuf::io::CodedInputStream;
using google::protobuf::io::CodedOutputStream;
using Valen::InputStream;
using Valen::OutputStream;
using Valen::SimpleString;

constexpr int kCapacity = 32768;
constexpr int kRounds = 10;  // over the same records, so that they stay in the cache
constexpr int kRecords = 20;

/// What fits one byte stays below 128: the peer's variable-length numbers, its quickest way to write it, are
/// one byte too.
struct Numbers {
    bool flag;
    std::uint8_t level;
    std::array<std::uint16_t, 2> ports;
    std::array<std::uint32_t, 6> counters;
    std::array<std::uint64_t, 4> times;

    bool operator==(const Numbers&) const = default;
};

/// Fifteen values; 200 records are 3000.
struct Record {
    Numbers numbers;
    std::string name;
};

std::vector<Record> makeRecords() {
    std::mt19937_64 random(1);
    std::vector<Record> records(kRecords);
    for (auto& [numbers, name] : records) {
        numbers.flag = (random() & 1) != 0;
        numbers.level = static_cast<std::uint8_t>(random() & 0x7F);
        for (std::uint16_t& port : numbers.ports) {
            port = static_cast<std::uint16_t>(random());
        }
        for (std::uint32_t& counter : numbers.counters) {
            counter = static_cast<std::uint32_t>(random());
        }
        for (std::uint64_t& time : numbers.times) {
            time = random();
        }
        name.assign(random() % 32, 'x');
    }
    return records;
}

void put(OutputStream& stream, const Record& record) {
    const auto& [numbers, name] = record;
    stream.putBool(numbers.flag);
    stream.putUInt8(numbers.level);
    for (const std::uint16_t port : numbers.ports) {
        stream.putUInt16(port);
    }
    for (const std::uint32_t counter : numbers.counters) {
        stream.putUInt32(counter);
    }
    for (const std::uint64_t time : numbers.times) {
        stream.putUInt64(time);
    }
    stream.putString(name.c_str());
}

void put(CodedOutputStream& stream, const Record& record) {
    const auto& [numbers, name] = record;
    stream.WriteVarint32(numbers.flag ? 1 : 0);
    stream.WriteVarint32(numbers.level);
    for (const std::uint16_t port : numbers.ports) {
        stream.WriteRaw(&port, sizeof port);
    }
    for (const std::uint32_t counter : numbers.counters) {
        stream.WriteLittleEndian32(counter);
    }
    for (const std::uint64_t time : numbers.times) {
        stream.WriteLittleEndian64(time);
    }
    stream.WriteVarint32(static_cast<std::uint32_t>(name.size()));
    stream.WriteString(name);
}

void getNumbers(InputStream& stream, Numbers& numbers) {
    numbers.flag = stream.getBool();
    numbers.level = stream.getUInt8();
    for (std::uint16_t& port : numbers.ports) {
        port = stream.getUInt16();
    }
    for (std::uint32_t& counter : numbers.counters) {
        counter = stream.getUInt32();
    }
    for (std::uint64_t& time : numbers.times) {
        time = stream.getUInt64();
    }
}

SimpleString getName(InputStream& stream) {
    return stream.getString();
}

void getNumbers(CodedInputStream& stream, Numbers& numbers) {
    std::uint32_t small = 0;
    stream.ReadVarint32(&small);
    numbers.flag = small != 0;
    stream.ReadVarint32(&small);
    numbers.level = static_cast<std::uint8_t>(small);
    for (std::uint16_t& port : numbers.ports) {
        stream.ReadRaw(&port, sizeof port);
    }
    for (std::uint32_t& counter : numbers.counters) {
        stream.ReadLittleEndian32(&counter);
    }
    for (std::uint64_t& time : numbers.times) {
        stream.ReadLittleEndian64(&time);
    }
}

std::string getName(CodedInputStream& stream) {
    std::uint32_t length = 0;
    std::string name;
    stream.ReadVarint32(&length);
    stream.ReadString(&name, static_cast<int>(length));
    return name;
}

template <typename Stream>
void putAll(Stream& stream, const std::vector<Record>& records) {
    for (int round = 0; round < kRounds; ++round) {
        for (const Record& record : records) {
            put(stream, record);
        }
    }
}

/// Every record is got into a new one, as a receiver of messages does it.
template <typename Stream>
void getAll(Stream& stream) {
    for (int count = kRounds * kRecords; count != 0; --count) {
        Numbers numbers;
        getNumbers(stream, numbers);
        const auto name = getName(stream);
        benchmark::DoNotOptimize(numbers);
        benchmark::DoNotOptimize(name.c_str());
    }
}

/// The message as the peer writes it.
std::string peerMessage(const std::vector<Record>& records) {
    std::string bytes(kCapacity, '\0');
    ArrayOutputStream array(bytes.data(), kCapacity);
    CodedOutputStream stream(&array);
    putAll(stream, records);
    bytes.resize(static_cast<std::size_t>(stream.ByteCount()));
    return bytes;
}

bool comesBack(const std::vector<Record>& records) {
    OutputStream message;
    putAll(message, records);
    InputStream stream(message);
    for (int round = 0; round < kRounds; ++round) {
        for (const auto& [numbers, name] : records) {
            Numbers got;
            getNumbers(stream, got);
            if (got != numbers || getName(stream).c_str() != name) {
                return false;
            }
        }
    }
    return stream.eof() && message.GetSize() == static_cast<int>(peerMessage(records).size());
}

void putOurs(benchmark::State& state) {
    const std::vector<Record> records = makeRecords();
    if (!comesBack(records)) {
        state.SkipWithError("what was put did not come back");
    }
    OutputStream stream(kCapacity);
    for (auto _ : state) {
        stream.clear();
        putAll(stream, records);
        benchmark::ClobberMemory();
    }
}

void putProtobuf(benchmark::State& state) {
    const std::vector<Record> records = makeRecords();
    std::vector<char> bytes(kCapacity);
    for (auto _ : state) {
        ArrayOutputStream array(bytes.data(), kCapacity);
        CodedOutputStream stream(&array);
        putAll(stream, records);
        benchmark::ClobberMemory();
    }
}

void getOurs(benchmark::State& state) {
    const std::vector<Record> records = makeRecords();
    if (!comesBack(records)) {
        state.SkipWithError("what was put did not come back");
    }
    OutputStream message;
    putAll(message, records);
    InputStream stream(message);
    for (auto _ : state) {
        stream.reset();
        getAll(stream);
    }
}

void getProtobuf(benchmark::State& state) {
    const std::string bytes = peerMessage(makeRecords());
    for (auto _ : state) {
        CodedInputStream stream(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                static_cast<int>(bytes.size()));
        getAll(stream);
    }
}

BENCHMARK(putOurs)->Name("stream_put/ours");
BENCHMARK(putProtobuf)->Name("stream_put/protobuf");
BENCHMARK(getOurs)->Name("stream_get/ours");
BENCHMARK(getProtobuf)->Name("stream_get/protobuf");

}  // namespace
