#pragma once

#include <array>
#include <string_view>

namespace boardsim {

/// The path of an open file as the kernel reports it; empty when there is none, or none that would be of
/// interest here because it is long. Neither allocates nor changes errno.
class DescriptorPath {
public:
    explicit DescriptorPath(int descriptor) noexcept;

    std::string_view text() const noexcept { return {characters_.data(), length_}; }

private:
    std::array<char, 512> characters_;
    std::size_t length_ = 0;
};

}  // namespace boardsim
