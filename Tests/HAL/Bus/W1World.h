#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/Support/FileFaults.h"

/// A board with 1-Wire buses, laid out as the kernel's w1 subsystem does: the devices are elsewhere, and
/// "/sys/bus/w1/devices/" holds links to them.
class W1World : public BoardWorld {
protected:
    static inline const std::filesystem::path kDevices = "/sys/bus/w1/real";
    static inline const std::filesystem::path kLinks = "/sys/bus/w1/devices";

    W1World() { std::filesystem::create_directories(kLinks); }

    static std::filesystem::path busDirectory(int bus) {
        return kDevices / ("w1_bus_master" + std::to_string(bus));
    }
    static void addBus(int bus) {
        support::PrivateWorld::write(busDirectory(bus) / "w1_master_search", "");
        support::PrivateWorld::write(busDirectory(bus) / "w1_master_remove", "");
        std::filesystem::create_directory_symlink(busDirectory(bus), kLinks / busDirectory(bus).filename());
    }
    static void addSlave(int bus, const std::string& name) {
        std::filesystem::create_directories(busDirectory(bus) / name);
        std::filesystem::create_directory_symlink(busDirectory(bus) / name, kLinks / name);
    }
    static void removeSlave(int bus, const std::string& name) {
        std::filesystem::remove(kLinks / name);
        std::filesystem::remove_all(busDirectory(bus) / name);
    }
    /// A temperature sensor with its two files.
    static void addSensor(int bus, const std::string& name, std::string_view user, std::string_view temp) {
        addSlave(bus, name);
        support::PrivateWorld::write(busDirectory(bus) / name / "user", user);
        support::PrivateWorld::write(busDirectory(bus) / name / "temp", temp);
    }

    /// What was logged by the 1-Wire code: without the lines that every thread writes.
    std::vector<support::LogLine> w1Lines() {
        std::vector<support::LogLine> lines = syslog.lines();
        std::erase_if(lines, [](const auto& line) { return line.text.starts_with("Firmware: "); });
        return lines;
    }

    static int openDescriptors() {
        const auto entries = std::filesystem::directory_iterator("/proc/self/fd");
        return static_cast<int>(std::distance(begin(entries), end(entries)));
    }
};
