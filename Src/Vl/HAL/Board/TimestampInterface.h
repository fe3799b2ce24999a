#pragma once

namespace Valen {

/// A source of the timestamps that the boards of one network share.
class TimestampInterface {
public:
    virtual ~TimestampInterface() = default;
    /// @return the current timestamp, in units of the network's sync word.
    virtual unsigned int getTimestamp() = 0;
};

}  // namespace Valen
