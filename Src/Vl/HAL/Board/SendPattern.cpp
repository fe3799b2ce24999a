// How the control processor sends a test pattern.
#include <fcntl.h>

#include <array>
#include <chrono>
#include <cstdio>

#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Identity/JenkinsChecksum.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Board/PatternFile.h"
#include "Vl/HAL/Board/RawSocket.h"
#include "Vl/HAL/Bus/Pause.h"

namespace Valen {
namespace {

constexpr const char* kInterface = "pattern";
constexpr const char* kCounter = "/sys/class/net/pattern/statistics/tx_bytes";
constexpr int kNoProtocol = 0;  // nothing is received

constexpr std::chrono::milliseconds kFrameInterval(10);
constexpr std::chrono::milliseconds kCounterSettles(100);

/// The bytes that the interface has ever sent; 0 when it does not tell.
unsigned long transmittedBytes() {
    const Descriptor file = Descriptor::open(kCounter, O_RDONLY);
    std::array<char, 32> text{};
    unsigned long count = 0;
    if (readExact(file.get(), std::as_writable_bytes(std::span(text).first(text.size() - 1))) > 0) {
        std::sscanf(text.data(), "%15lu", &count);
    }
    return count;
}

/// @return whether every chunk went out and the file was as long as it says.
bool sendChunks(PatternFile& file, RawSocket& socket, JenkinsChecksum& checksum) {
    while (file.next()) {
        checksum.data(file.words().data(), static_cast<int>(file.words().size()));
        if (socket.Send(file.bytes()) < std::ssize(file.bytes())) {
            VL_LOG(Firmware, SERVICE, "SendPattern(): Raw send failed");
            return false;
        }
        HAL::pauseFor(kFrameInterval);
    }
    if (file.payloadRead() != file.payloadExpected()) {
        VL_LOG(Firmware, SERVICE, "SendPattern(): Bytes read do not match expected: %ld != %ld",
               file.payloadRead(), file.payloadExpected());
        return false;
    }
    return true;
}

}  // namespace

int CPLinkInterface::sendPattern(const char* file, JenkinsChecksum& checksum, bool corrupt) {
    const unsigned long before = transmittedBytes();
    RawSocket socket(kInterface, kNoProtocol);
    if (!socket.SetSendBufferSize(PatternFile::kChunkSize)) {
        VL_LOG(Firmware, SERVICE, "SendPattern(): Unable to set send buffer size");
        return PatternNoSocket;
    }
    PatternFile pattern(file, corrupt);
    if (!pattern.isOpen()) {
        VL_LOG(Firmware, SERVICE, "SendPattern(): File not found: %s", file);
        return PatternNoFile;
    }
    if (!sendChunks(pattern, socket, checksum)) {
        return PatternFailed;
    }
    VL_LOG(Firmware, DEBUG, "Total bytes sent: %ld", pattern.bytesRead());
    pattern.close();
    HAL::pauseFor(kCounterSettles);
    const auto total = static_cast<unsigned long>(pattern.bytesRead());
    const unsigned long after = transmittedBytes();
    if (before + total != after) {
        VL_LOG(Firmware, SERVICE,
               "SendPattern(): Lost %lu Pattern bytes of %lu bytes total (previously sent bytes: %lu after "
               "sending: %lu)!",
               before + total - after, total, before, after);
        return PatternFailed;
    }
    return PatternSent;
}

}  // namespace Valen
