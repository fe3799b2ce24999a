// A program for the virtual board that drives registers which act, as its words say, one after the other:
// the management bus, the MAC and the SPI master.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kRegisterSpace = 65536;
constexpr std::uint32_t kMdio = 0x800;
constexpr std::uint32_t kMac = 0x2000;
constexpr std::uint32_t kSpi = 0x2400;
constexpr std::chrono::milliseconds kPatience(500);

volatile std::uint32_t& reg(std::uint32_t offset) {
    static volatile std::uint32_t* const base = [] {
        const int file = open("/dev/fpga", O_RDWR | O_CLOEXEC);
        void* mapped = mmap(nullptr, kRegisterSpace, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (file < 0 || mapped == MAP_FAILED) {
            std::perror("/dev/fpga");
            std::exit(1);
        }
        return static_cast<volatile std::uint32_t*>(mapped);
    }();
    return base[offset / 4];
}

/// "1.2=0x3" as numbers.
std::vector<std::uint32_t> numbers(const std::string& text) {
    std::vector<std::uint32_t> all;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(".=", start), text.size());
        all.push_back(static_cast<std::uint32_t>(std::stoul(text.substr(start, end - start), nullptr, 0)));
        start = end + 1;
    }
    return all;
}

/// Waits until `bits` are clear. @return the last value; exits when that takes too long.
std::uint32_t waitUntilClear(std::uint32_t offset, std::uint32_t bits) {
    const Clock::time_point end = Clock::now() + kPatience;
    std::uint32_t value = reg(offset);
    while (value & bits) {
        if (Clock::now() > end) {
            std::printf("0x%04x stays 0x%08x\n", offset, value);
            std::exit(3);
        }
        value = reg(offset);
    }
    return value;
}

std::uint32_t readPhy(std::uint32_t phy, std::uint32_t number) {
    waitUntilClear(kMdio, 0xC0000000);
    reg(kMdio) = 0x60000000 | phy << 23 | number << 18;
    return waitUntilClear(kMdio, 0x80000000) & 0xFFFF;
}

void readAndPrint(const std::string& place) {
    const auto n = numbers(place);
    std::printf("0x%04x\n", readPhy(n[0], n[1]));
}

void writePhy(const std::string& placeAndValue) {
    const auto n = numbers(placeAndValue);
    waitUntilClear(kMdio, 0xC0000000);
    reg(kMdio) = 0x50020000 | n[0] << 23 | n[1] << 18 | n[2];
}

/// Waits for a PHY's link: twice, since the bit remembers that the link was down.
void awaitLink(const std::string& phy) {
    const std::uint32_t address = numbers(phy)[0];
    const Clock::time_point end = Clock::now() + kPatience;
    while (!(readPhy(address, 1) & 4)) {
        if (Clock::now() > end) {
            std::puts("no link");
            return;
        }
    }
    std::puts("link");
}

void resetMac(const std::string&) {
    reg(kMac + 8) = 0x2000;
    waitUntilClear(kMac + 8, 0x2000);
    std::puts("reset");
}

void sendWords(const std::string& words) {
    for (const std::uint32_t word : numbers(words)) {
        while (!(reg(kSpi + 8) & 0x40)) {
        }
        reg(kSpi + 4) = word;
        while (!(reg(kSpi + 8) & 0x80)) {
        }
        std::printf("0x%08x\n", reg(kSpi));
    }
}

/// Counts reads that found what a register of the MAC holds.
void readMany(int times, std::uint32_t offset, std::uint32_t expected) {
    for (int i = 0; i < times; ++i) {
        if (reg(offset) != expected) {
            std::_Exit(4);
        }
    }
}

/// So many processes with two threads each read two registers at once.
void crowd(const std::string& processes) {
    reg(kMac + 4) = 0x12345678;
    for (std::uint32_t i = numbers(processes)[0]; i > 0; --i) {
        if (fork() == 0) {
            std::thread other([] { readMany(300, kMac + 4, 0x12345678); });
            readMany(300, kMac + 0x14, 1518);
            other.join();
            std::_Exit(0);
        }
    }
    int status = 0;
    while (wait(&status) > 0) {
        std::printf("%d\n", WEXITSTATUS(status));
    }
}

/// Measures one read, in microseconds.
void timeReads(const std::string& offset) {
    constexpr int kTimes = 20000;
    const std::uint32_t place = numbers(offset)[0];
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < kTimes; ++i) {
        static_cast<void>(std::uint32_t{reg(place)});
    }
    std::printf("%.2f us\n",
                std::chrono::duration<double, std::micro>(Clock::now() - start).count() / kTimes);
}

const std::map<std::string, std::function<void(const std::string&)>> kWords{
    {"peek", [](const std::string& place) { std::printf("0x%08x\n", reg(numbers(place)[0])); }},
    {"poke",
     [](const std::string& text) {
         const auto n = numbers(text);
         reg(n[0]) = n[1];
     }},
    {"read-phy", readAndPrint},
    {"write-phy", writePhy},
    {"link", awaitLink},
    {"reset-mac", resetMac},
    {"spi", sendWords},
    {"crowd", crowd},
    {"time", timeReads},
    {"wait-ms",
     [](const std::string& ms) { std::this_thread::sleep_for(std::chrono::milliseconds(numbers(ms)[0])); }},
};

}  // namespace

int main(int argc, char** argv) {
    for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
        const std::size_t colon = std::min(word.find(':'), word.size());
        kWords.at(word.substr(0, colon))(colon < word.size() ? word.substr(colon + 1) : "");
        std::fflush(stdout);
    }
}
