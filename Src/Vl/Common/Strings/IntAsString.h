#pragma once

#include <array>
#include <string>

namespace Valen {

/// An integer as decimal text, made without printf and without heap memory: `IntAsString(port).c_str()`.
class IntAsString {
public:
    explicit IntAsString(int value);

    const char* c_str() const { return characters_.data(); }

    /// The number in base 2 to 16, lower-case digits, '-' first when it is negative; empty for other bases.
    static std::string itoa(int value, int base);

private:
    std::array<char, 12> characters_;  // "-2147483648" and the terminator
};

}  // namespace Valen
