#pragma once

#include "Vl/Common/Files/Descriptor.h"

namespace Valen::File {

/// A file that is open for reading, or failed to be. Owns its descriptor; a descriptor below 1 counts as
/// closed. One thread uses an object at a time.
class In {
public:
    /// Opens `path` close-on-exec; see isValid().
    explicit In(const char* path);
    In(const In&) = delete;
    In& operator=(const In&) = delete;

    virtual ~In();
    /// Whether there is something to read from.
    virtual bool isValid() const;

protected:
    int descriptor() const { return descriptor_.get(); }
    void close() { descriptor_ = Descriptor(); }

private:
    Descriptor descriptor_;
};

}  // namespace Valen::File
