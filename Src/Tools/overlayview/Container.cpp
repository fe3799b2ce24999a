#include "Tools/overlayview/Container.h"

#include <algorithm>
#include <string>

namespace overlayview {
namespace {

constexpr std::uint32_t kMarker = 0xFFFFFFFF;

void checkHeader(const Header& header, std::size_t bodyBytes, Findings& findings) {
    if (header.marker != kMarker) {
        findings.damage.emplace_back("the marker is not ffffffff; a file without a header needs --raw");
    }
    const std::uint64_t statedBytes = std::uint64_t{header.bodyWords} * kWordBytes;
    if (statedBytes % kBodyUnit != 0) {
        findings.damage.push_back("the header's length, " + std::to_string(header.bodyWords) +
                                  " words, is no multiple of 32");
    }
    if (bodyBytes < statedBytes) {
        findings.damage.push_back("the file is cut: " + std::to_string(statedBytes - bodyBytes) +
                                  " bytes of the body are missing");
    }
    if (bodyBytes > statedBytes) {
        findings.damage.push_back("the file goes on for " + std::to_string(bodyBytes - statedBytes) +
                                  " bytes behind the length that its header tells");
    }
}

}  // namespace

Container openContainer(Bytes file, Findings& findings) {
    if (file.size() < kHeaderBytes) {
        findings.damage.push_back("the file is cut: its " + std::to_string(file.size()) +
                                  " bytes are less than a header");
        return {file, file.size()};
    }
    const Header header{wordAt(file, 0), wordAt(file, 4), wordAt(file, 8)};
    checkHeader(header, file.size() - kHeaderBytes, findings);
    return {file, kHeaderBytes, header};
}

Container openRaw(Bytes file, std::size_t offset, Findings& findings) {
    if (offset >= file.size()) {
        findings.damage.push_back("there is nothing at offset " + std::to_string(offset) + ": the file has " +
                                  std::to_string(file.size()) + " bytes");
    }
    return {file, std::min(offset, file.size())};
}

}  // namespace overlayview
