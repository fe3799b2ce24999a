#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "Tools/overlayview/Container.h"
#include "Tools/overlayview/Findings.h"
#include "Tools/overlayview/Kind.h"
#include "Tools/overlayview/Picture.h"
#include "Tools/overlayview/RunLengths.h"

namespace overlayview {

/// Everything that is told about a file. What does not apply or is not known is left empty.
struct Description {
    std::size_t fileBytes = 0;
    std::optional<Header> header{};
    std::size_t bodyBytes = 0;
    Kind kind = Kind::Unknown;
    std::optional<RunFacts> runs{};
    std::optional<std::uint64_t> pixels{};
    std::optional<Size> size{};
    std::optional<std::size_t> colours{};
    std::optional<std::uint64_t> paddingBytes{};
    Findings findings{};
};

/// The description as lines "name  value" for people.
std::string asText(const std::string& file, const Description& description);

/// The description as one JSON object, ending in a line feed. Names are as in the text with "_" for blanks;
/// the file's name is taken as UTF-8, anything else in it becomes U+FFFD.
std::string asJson(const std::string& file, const Description& description);

}  // namespace overlayview
