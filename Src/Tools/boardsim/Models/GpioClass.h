#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Models/GpioBlock.h"
#include "Tools/boardsim/Models/TextAttribute.h"

namespace boardsim {

/// The files of "/sys/class/gpio": "export" and "unexport"; for each chip a directory "gpiochip<base>" with
/// "label", "base" and "ngpio"; for each exported line a directory "gpio<number>" with "direction", "value"
/// and "active_low". An exported line is taken. Who still has a file open of a line that is not exported any
/// more writes to no device (ENODEV). Not thread-safe.
/// Source: the kernel's Documentation/admin-guide/gpio/sysfs.rst.
class GpioClass {
public:
    struct Directory {
        std::string name;
        std::vector<TextAttribute> files;
    };

    /// @param lines outlive this object.
    explicit GpioClass(GpioBlock& lines) : lines_(lines) {}

    /// "export" and "unexport".
    std::vector<TextAttribute> files();
    /// The directories that there are now.
    std::vector<Directory> directories();

private:
    struct Exported {
        unsigned line;
        bool activeLow = false;
    };

    std::errc exportLine(std::string_view text);
    std::errc unexportLine(std::string_view text);
    std::vector<Exported>::iterator findExported(unsigned line);
    bool isActiveLow(unsigned line);
    std::errc storeDirection(unsigned line, std::string_view text);
    std::errc storeValue(unsigned line, std::string_view text);
    std::errc storeActiveLow(unsigned line, std::string_view text);
    std::string showValue(unsigned line);
    std::vector<TextAttribute> filesOf(unsigned line);
    using Store = std::errc (GpioClass::*)(unsigned line, std::string_view text);
    std::function<std::errc(std::string_view)> whileExported(unsigned line, Store store);

    GpioBlock& lines_;
    std::vector<Exported> exported_;
};

}  // namespace boardsim
