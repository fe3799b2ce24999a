#pragma once

namespace Valen {

/// A word-level SPI master: select a slave, write words to it, let it go. One thread at a time.
class SpiBus {
public:
    /// Selects the slave(s) that the following words go to. @return false when the hardware is not there.
    virtual bool selectSlave(int slave) = 0;
    /// Lets the slave go when the last word is out. @return as selectSlave().
    virtual bool unselect() = 0;
    /// Sends one word. @return as selectSlave().
    virtual bool writeWord(unsigned int word) = 0;
    virtual ~SpiBus() = default;
};

}  // namespace Valen
