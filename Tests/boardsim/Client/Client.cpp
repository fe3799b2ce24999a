// A program for the virtual board that does what its words say, one after the other. Everything it touches,
// it touches as the device's software would: the "screen" file, the mapped registers, syslog.
#include <fcntl.h>
#include <linux/if_packet.h>
#include <linux/mii.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr const char* kScreen = "/sys/bus/avalon/devices/subsys_hps_oled_spi/spi_master/spi1/spi1.0/screen";
constexpr std::size_t kRegisterSpace = 65536;
constexpr std::size_t kPanelLed = 0x1000 / 4;
constexpr std::size_t kPanelCounters = 0x1004 / 4;

[[noreturn]] void give(const char* what) {
    std::perror(what);
    std::exit(1);
}

int screen() {
    static const int file = open(kScreen, O_RDWR | O_CLOEXEC);
    if (file < 0) {
        give(kScreen);
    }
    return file;
}

volatile std::uint32_t* registers() {
    static volatile std::uint32_t* const base = [] {
        const int file = open("/dev/fpga", O_RDWR | O_CLOEXEC);
        void* mapped = mmap(nullptr, kRegisterSpace, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (file < 0 || mapped == MAP_FAILED) {
            give("/dev/fpga");
        }
        return static_cast<volatile std::uint32_t*>(mapped);
    }();
    return base;
}

void put(const std::string& bytes) {
    lseek(screen(), 0, SEEK_SET);
    const ssize_t written = write(screen(), bytes.data(), bytes.size());
    if (written != static_cast<ssize_t>(bytes.size())) {
        std::printf("written %zd\n", written);
    }
}

int number(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 0));
}

/// Prints the counters' next values as they change, `changes` times, and answers each with a new state.
void await(const std::string& changes) {
    std::uint32_t last = registers()[kPanelCounters];
    put(std::string(15360, '\0'));
    put("1\n");
    for (int i = number(changes); i > 0;) {
        const std::uint32_t now = registers()[kPanelCounters];
        if (now != last) {
            std::printf("0x%08x\n", now);
            std::fflush(stdout);
            last = now;
            --i;
            put("1\n");
        }
    }
}

/// Polls the counters for so many milliseconds.
void pollFor(const std::string& milliseconds) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(number(milliseconds));
    while (Clock::now() < end) {
        static_cast<void>(registers()[kPanelCounters]);
    }
}

/// Prints the counters when they are no longer what they were when they were printed last, at first 0.
void awaitChange(const std::string&) {
    static std::uint32_t last = 0;
    std::uint32_t now = last;
    while (now == last) {
        now = registers()[kPanelCounters];
    }
    last = now;
    std::printf("0x%08x\n", now);
}

void sayAndHang(const std::string& text) {
    std::puts(text.c_str());
    std::fflush(stdout);
    for (;;) {
        pause();
    }
}

/// Prints each signal that comes; SIGUSR1 is the last.
void tellSignals(const std::string&) {
    sigset_t told;
    sigfillset(&told);
    sigprocmask(SIG_BLOCK, &told, nullptr);
    std::puts("ready");
    int number = 0;
    while (number != SIGUSR1) {
        std::fflush(stdout);
        sigwait(&told, &number);
        std::printf("signal %d\n", number);
    }
}

/// "REQUEST,ARGUMENT" for "/dev/gpio"; prints what the call gives, or -1 and the error's number.
void askGpio(const std::string& words) {
    static const int device = open("/dev/gpio", O_RDONLY | O_CLOEXEC);
    const std::size_t comma = words.find(',');
    const int result = ioctl(device, static_cast<unsigned long>(number(words.substr(0, comma))),
                             static_cast<unsigned long>(number(words.substr(comma + 1))));
    if (result < 0) {
        std::printf("-1, %d\n", errno);
    } else {
        std::printf("%d\n", result);
    }
}

/// "INTERFACE,REQUEST,PHY,REGISTER[,VALUE]"; prints the result, the PHY and the value that came back, or -1
/// and the error's number.
void askInterface(const std::string& words) {
    static const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    std::istringstream rest(words);
    std::string interface;
    std::getline(rest, interface, ',');
    std::vector<int> numbers;
    for (std::string word; std::getline(rest, word, ',');) {
        numbers.push_back(number(word));
    }
    numbers.resize(4);
    ifreq record{};
    std::strncpy(record.ifr_name, interface.c_str(), IFNAMSIZ - 1);
    mii_ioctl_data data{static_cast<std::uint16_t>(numbers[1]), static_cast<std::uint16_t>(numbers[2]),
                        static_cast<std::uint16_t>(numbers[3]), 0};
    std::memcpy(&record.ifr_ifru, &data, sizeof data);
    const int result = ioctl(any, static_cast<unsigned long>(numbers[0]), &record);
    std::memcpy(&data, &record.ifr_ifru, sizeof data);
    if (result < 0) {
        std::printf("-1, %d\n", errno);
    } else {
        std::printf("%d, phy %d, 0x%04x\n", result, data.phy_id, data.val_out);
    }
}

/// "eth0,1024": sends one frame of so many bytes as it is.
void sendFrame(const std::string& text) {
    const std::size_t comma = text.find(',');
    sockaddr_ll wire{};
    wire.sll_family = AF_PACKET;
    wire.sll_ifindex = static_cast<int>(if_nametoindex(text.substr(0, comma).c_str()));
    static const int any = socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
    const std::string frame(static_cast<std::size_t>(number(text.substr(comma + 1))), 'x');
    if (bind(any, reinterpret_cast<const sockaddr*>(&wire), sizeof wire) != 0) {
        give(text.c_str());
    }
    std::printf("%zd sent\n", send(any, frame.data(), frame.size(), 0));
}

/// "0x3c,0x01020304": writes a register.
void setRegister(const std::string& text) {
    const std::size_t comma = text.find(',');
    registers()[number(text.substr(0, comma)) / 4] =
        static_cast<std::uint32_t>(std::strtoul(text.substr(comma + 1).c_str(), nullptr, 0));
}

const std::map<std::string, std::function<void(const std::string&)>> kWords{
    {"draw", [](const std::string& value) { put(std::string(15360, static_cast<char>(number(value)))); }},
    {"state", [](const std::string& state) { put(state + "\n"); }},
    {"lit",
     [](const std::string&) {
         char byte = 2;
         lseek(screen(), 0, SEEK_SET);
         const ssize_t count = read(screen(), &byte, 1);
         std::printf("read %zd, %d\n", count, byte);
     }},
    {"await", await},
    {"counters", [](const std::string&) { std::printf("0x%08x\n", registers()[kPanelCounters]); }},
    {"spin",
     [](const std::string& times) {
         for (int i = number(times); i > 0; --i) {
             static_cast<void>(registers()[kPanelCounters]);
         }
     }},
    {"poll-ms", pollFor},
    {"change", awaitChange},
    {"led",
     [](const std::string& value) { registers()[kPanelLed] = static_cast<std::uint32_t>(number(value)); }},
    {"spoil",
     [](const std::string& v) { registers()[kPanelCounters] = static_cast<std::uint32_t>(number(v)); }},
    {"gpio", askGpio},
    {"frame", sendFrame},
    {"set", setRegister},
    {"mii", askInterface},
    {"log", [](const std::string& text) { syslog(LOG_LOCAL0 | LOG_INFO, "%s", text.c_str()); }},
    {"hang", sayAndHang},
    {"signals", tellSignals},
    {"exit", [](const std::string& status) { std::exit(number(status)); }},
};

}  // namespace

int main(int argc, char** argv) {
    for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
        const std::size_t colon = std::min(word.find(':'), word.size());
        kWords.at(word.substr(0, colon))(colon < word.size() ? word.substr(colon + 1) : "");
    }
}
