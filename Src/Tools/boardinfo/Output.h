#pragma once

#include <cstddef>
#include <string_view>

#include "Vl/Common/Files/Descriptor.h"

namespace boardinfo {

/// The program's standard output, kept for the report: what a library prints there by itself goes to standard
/// error from now on. Standard descriptors that the program was started without lead to "/dev/null", so that
/// no device is opened in their place. Made first of all, before anything is opened.
class Output {
public:
    Output();

    bool isTerminal() const;
    /// How many lines the terminal shows; 0 when it does not tell.
    std::size_t terminalLines() const;

    /// Writes all of `text`. @return false on failure, with errno set; EPIPE: nobody reads any more.
    bool write(std::string_view text) const;

private:
    Valen::Descriptor report_;
};

}  // namespace boardinfo
