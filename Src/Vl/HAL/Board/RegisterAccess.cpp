// How the control processor moves more than one register at a time into and out of the FPGA.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Vl/HAL/Board/CPInterface.h"

namespace Valen {
namespace {

constexpr unsigned int kWordSize = sizeof(std::uint32_t);
constexpr std::uint32_t kLane = 0xFFFF;

/// Stands at some offset of the register space, aligned or not, and how far it is from there to the end.
class RegisterBytes {
public:
    RegisterBytes(const HAL::FPGAInterface& fpga, unsigned int offset) {
        const auto words = fpga.words(offset);
        if (!words.empty()) {
            const std::size_t skipped = offset % kWordSize;
            next_ = reinterpret_cast<volatile std::byte*>(words.data()) + skipped;
            left_ = words.size_bytes() - skipped;
        }
    }

    std::size_t left() const { return left_; }

    /// Moves the next register of that width, in one access however it is aligned.
    template <typename Unsigned>
    Unsigned read() {
        return take<Unsigned>().value;
    }
    template <typename Unsigned>
    void write(Unsigned value) {
        take<Unsigned>().value = value;
    }

private:
    template <typename Unsigned>
    struct [[gnu::packed]] Register {
        Unsigned value;
    };

    template <typename Unsigned>
    volatile Register<Unsigned>& take() {
        auto& taken = *reinterpret_cast<volatile Register<Unsigned>*>(next_);
        next_ += sizeof(Unsigned);
        return taken;
    }

    volatile std::byte* next_ = nullptr;
    std::size_t left_ = 0;
};

/// Moves registers, one after the other, into a buffer.
class Reading {
public:
    Reading(RegisterBytes registers, void* buf) : registers_(registers), to_(static_cast<std::byte*>(buf)) {}

    template <typename Unsigned>
    void move() {
        put(registers_.read<Unsigned>());
    }

    /// 16-bit data that are in either lane of a register.
    void moveLane() {
        const auto word = registers_.read<std::uint32_t>();
        put((word | word >> 16) & kLane);
    }

private:
    template <typename Unsigned>
    void put(Unsigned value) {
        std::memcpy(to_, &value, sizeof value);
        to_ += sizeof value;
    }

    RegisterBytes registers_;
    std::byte* to_;
};

/// Moves a buffer, piece by piece, into registers.
class Writing {
public:
    Writing(RegisterBytes registers, const void* buf)
        : registers_(registers), from_(static_cast<const std::byte*>(buf)) {}

    template <typename Unsigned>
    void move() {
        registers_.write(get<Unsigned>());
    }

    void moveLane() { registers_.write(get<std::uint32_t>() & kLane); }

private:
    template <typename Unsigned>
    Unsigned get() {
        Unsigned value;
        std::memcpy(&value, from_, sizeof value);
        from_ += sizeof value;
        return value;
    }

    RegisterBytes registers_;
    const std::byte* from_;
};

/// @return where it goes on: by value, so that both places stay in the processor's registers meanwhile.
template <typename Direction>
Direction moveWords(Direction direction, std::size_t count) {
    // Four at a time: counting takes longer than moving.
    for (; count >= 4; count -= 4) {
        direction.template move<std::uint32_t>();
        direction.template move<std::uint32_t>();
        direction.template move<std::uint32_t>();
        direction.template move<std::uint32_t>();
    }
    for (; count > 0; --count) {
        direction.template move<std::uint32_t>();
    }
    return direction;
}

template <typename Direction>
void moveBytes(Direction direction, unsigned int offset, std::size_t count) {
    auto left = static_cast<std::ptrdiff_t>(count);
    if (offset % 2 != 0) {  // without a look at the count, as the next: meant
        direction.template move<std::uint8_t>();
        offset += 1;
        left -= 1;
    }
    if (offset % 4 != 0) {
        direction.template move<std::uint16_t>();
        left -= 2;
    }
    if (left > 3) {
        direction = moveWords(direction, static_cast<std::size_t>(left) / kWordSize);
        left %= kWordSize;
    }
    if (left > 1) {
        direction.template move<std::uint16_t>();
        left -= 2;
    }
    if (left > 0) {
        direction.template move<std::uint8_t>();
    }
}

/// @param left how many bytes of registers there are.
template <typename Direction>
void moveHalfwords(Direction direction, std::size_t count, std::size_t left) {
    for (; count > 1 && left >= kWordSize; count -= 2, left -= kWordSize) {
        direction.moveLane();
    }
    if (count == 1 && left >= sizeof(std::uint16_t)) {
        direction.template move<std::uint16_t>();
    }
}

}  // namespace

bool CPInterface::readFPGA(unsigned int offset, void* buf, unsigned int count) {
    const RegisterBytes registers(fpga_, offset - offset % kWordSize);
    moveWords(Reading(registers, buf), std::min<std::size_t>(count, registers.left() / kWordSize));
    return true;  // meant, whatever was there to read
}

bool CPInterface::writeFPGA(unsigned int offset, const void* buf, unsigned int count) {
    const RegisterBytes registers(fpga_, offset - offset % kWordSize);
    moveWords(Writing(registers, buf), std::min<std::size_t>(count, registers.left() / kWordSize));
    return true;  // meant, whatever was there to write
}

void CPInterface::readFPGABytes(unsigned int offset, void* buf, unsigned int count) {
    const RegisterBytes registers(fpga_, offset);
    if (registers.left() > 0) {
        moveBytes(Reading(registers, buf), offset, std::min<std::size_t>(count, registers.left()));
    }
}

void CPInterface::writeFPGABytes(unsigned int offset, const void* buf, unsigned int count) {
    const RegisterBytes registers(fpga_, offset);
    if (registers.left() > 0) {
        moveBytes(Writing(registers, buf), offset, std::min<std::size_t>(count, registers.left()));
    }
}

void CPInterface::readFPGAHalfwords(unsigned int offset, void* buf, unsigned int count) {
    const RegisterBytes registers(fpga_, offset);
    moveHalfwords(Reading(registers, buf), count, registers.left());
}

void CPInterface::writeFPGAHalfwords(unsigned int offset, const void* buf, unsigned int count) {
    const RegisterBytes registers(fpga_, offset);
    moveHalfwords(Writing(registers, buf), count, registers.left());
}

}  // namespace Valen
