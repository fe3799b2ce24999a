#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace support {

/// Makes files faulty while it lives: those whose path begins with a given text. Sleeps return at once, and
/// are noted. The test program compiles FileFaults.cpp and is linked with `--wrap` for open, read, write,
/// lseek and nanosleep. One at a time; calls of all threads are caught. Make it before threads use the files
/// and change its members only while none does.
class FileFaults {
public:
    explicit FileFaults(std::string pathPrefix);
    FileFaults(const FileFaults&) = delete;
    FileFaults& operator=(const FileFaults&) = delete;
    ~FileFaults();

    /// What the next reads and writes do, in order: a positive number moves that many bytes at most, 0 moves
    /// none, a negative one is an error number. Behind the last all go well.
    std::deque<int> reads;
    std::deque<int> writes;
    /// Bytes that can still be written; then the power is off: nothing can be opened, read or written.
    long bytesUntilPowerOff = kPowerStaysOn;
    /// Opening truncates nothing, as with the files of sysfs.
    bool keepsContents = false;
    /// Called before each read, with nothing locked.
    std::function<void()> beforeRead;
    /// Called for each sleep.
    std::function<void()> onSleep;
    /// The sleeps so far.
    std::vector<std::chrono::milliseconds> sleeps;

    /// Waits until so many reads have been made since the beginning.
    void waitForReads(int count);
    int readCount();

    static constexpr long kPowerStaysOn = -1;

    // For the calls that are caught.
    bool concerns(const std::string& path) const { return path.starts_with(pathPrefix_); }
    bool isOff() const { return bytesUntilPowerOff == 0; }
    void countRead();
    std::mutex mutex;

private:
    std::string pathPrefix_;
    std::condition_variable counted_;
    int readCount_ = 0;
};

}  // namespace support
