#pragma once

#include <string>
#include <string_view>

/// The bytes of a card's identity ROM. The healthy one has the addresses 02:00:5E:01:02:03 and ...:04, a
/// version of card type 80 and the serial 4006381333931, made and serviced at the times 1 and 2.
struct RomImage {
    std::string head = std::string(16, '\x5A');
    std::string firstMac{"\x02\x00\x5E\x01\x02\x03", 6};
    std::string secondMac{"\x02\x00\x5E\x01\x02\x04", 6};
    std::string version{"\x03\x02\x01\x80\x04\x00\xB1\x30\x00\x00\x00\x00", 12};
    std::string serial{"\xAB\xAD\xEF\xCE\xA4\x03\x00\x00\x01\x00\x00\x00\x02\x00\x00\x00", 16};

    std::string bytes() const { return head + firstMac + secondMac + version + serial; }
};
