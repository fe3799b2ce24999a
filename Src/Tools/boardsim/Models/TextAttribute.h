#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace boardsim {

/// A text file of sysfs: `show` gives its whole contents, line end included; `store` takes what a program
/// writes, with or without a line end, or says why not. An empty function stands for a file that cannot be
/// read, or written.
struct TextAttribute {
    std::string name;
    std::function<std::string()> show{};
    std::function<std::errc(std::string_view)> store{};
};

/// The number in what was written to an attribute: decimal, or hexadecimal after "0x", as the kernel's
/// kstrtol() takes it, with at most one line end after it.
/// @return false when it is none; `number` stays.
bool readNumber(std::string_view text, long& number);

}  // namespace boardsim
