#pragma once

#include <unistd.h>

#include <utility>

namespace boardsim {

/// Owns one file descriptor and closes it. Move-only; -1 stands for none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }

    /// Gives the descriptor away.
    int release() { return std::exchange(descriptor_, -1); }

    /// Closes it now.
    void reset() {
        if (descriptor_ >= 0) {
            close(std::exchange(descriptor_, -1));
        }
    }

private:
    int descriptor_ = -1;
};

}  // namespace boardsim
