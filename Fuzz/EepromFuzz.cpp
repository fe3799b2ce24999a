// A field-structured EEPROM image of any content: fields stay within what was read.
#include <fcntl.h>

#include <cstddef>
#include <cstdint>

#include "Fuzz/MemoryFile.h"
#include "Fuzz/Require.h"
#include "Vl/HAL/Board/Eeprom.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MemoryFile file;
    file.write(data, size);
    Valen::SafeFileDescriptor image = Valen::SafeFileDescriptor::open(file.path(), O_RDONLY);
    std::size_t seen = 0;
    const auto sum = [&seen](const auto* field) {
        unsigned int all = 0;
        for (const std::uint8_t byte : field->body()) {
            all += byte;
        }
        seen += field->length() + (all & 0);
    };
    Valen::Eeprom::read(image, false, sum, sum, sum, sum);
    require(seen <= size && seen <= 1024);
    return 0;
}
