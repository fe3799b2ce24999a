// Any text as a version; a version that was read must read the same from what it writes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Identity/Version.h"

namespace {

using Valen::Version;

constexpr Version kBefore{{0x11223344, 0x55667788, 0x99AABBCC}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const auto read : {&Version::FromFileString, &Version::ParseDate, &Version::Set}) {
        Version version = kBefore;
        if (!(version.*read)(text.c_str())) {
            require(version == kBefore);
            continue;
        }
        version.words[2] &= version.hasFurtherNumbers() ? 0x8FFFFFFF : 0xFFFFFFFF;  // what toString shows
        Version again;
        require(again.Set(version.toString().c_str()) && again == version);
        require(again.FromFileString(version.toFileString().c_str()));
    }
    return 0;
}
