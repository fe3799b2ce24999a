#pragma once

#include <utility>

namespace Valen {

/// A file descriptor that closes itself. Move-only; -1 while it holds none.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes over `descriptor`; negative means none.
    explicit Descriptor(int descriptor) : number_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    /// Closes what it holds and takes over what `other` holds, which then holds none.
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    /// Opens `path` close-on-exec with open(2)'s `flags`, without creating anything. @return an invalid
    /// descriptor on failure, with errno set.
    static Descriptor open(const char* path, int flags);

    /// Closes it now. @return close(2)'s result, -1 with errno EBADF when there is none.
    int close();

    bool isValid() const { return number_ >= 0; }
    int get() const { return number_; }

private:
    int number_ = -1;
};

}  // namespace Valen
