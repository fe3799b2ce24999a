#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "Vl/Common/Enums/Temperature.h"
#include "Vl/HAL/Board/LEDControl.h"
#include "Vl/HAL/Board/MACAddressType.h"
#include "Vl/HAL/Board/Thermals.h"
#include "Vl/HAL/Board/TimestampInterface.h"
#include "Vl/HAL/Board/Vitc.h"
#include "Vl/HAL/Bus/GPIO.h"
#include "Vl/HAL/Fpga/FPGAInterface.h"

namespace Valen {

class ADVInterface;
class AlteraSpi;
class MACAddress;
class OledPanelInterface;
class SyncBlock;
struct HaldenSerial;
struct SerialNo;
struct Version;

namespace HAL {
class GenericEthernetPhy;
class MDIO;
}  // namespace HAL

/// Which configuration a network runs on.
using NetConfigId = std::uint32_t;

/// The board's root object on the control processor: the main FPGA's register space, the GPIO device, the
/// card's identity, the central sync block, temperatures, and what the board variants build on them. Built by
/// a variant, one per process, and then reachable from anywhere through getInstance().
///
/// Missing hardware is no error at construction: what needs it fails later. Nothing throws. Failures are
/// results and, where it is said, lines in the log (origin CPCardInterface).
///
/// Register accesses are single volatile loads and stores without a lock; any thread may make them, and call
/// the static operations. Everything else is for one thread at a time.
class CPInterface : public TimestampInterface {
public:
    using LEDControl = Valen::LEDControl;
    using Vitc = Valen::Vitc;
    using therm_entry = Valen::therm_entry;

    /// The speed of the user port's MAC, in Mbit/s; any other value stands for 100, too.
    enum class EthSpeed : int {
        Mbit10 = 1,
        Mbit100 = 2,
        Mbit1000 = 3,
    };

    static constexpr const char* cpld_rom_file = "/dev/bootrom";
    static constexpr NetConfigId kNoNetConfigId = 0xFFFFFFFF;
    static constexpr int kNoSyncBlock = -7;

    CPInterface(const CPInterface&) = delete;
    CPInterface& operator=(const CPInterface&) = delete;
    ~CPInterface() override;

    /// @return the word that the sync block shows as timestamp; 0 without a sync block.
    unsigned int getTimestamp() override;
    /// The board's video chip, opened when it is first asked for and shared from then on. @return empty, with
    /// a line in the log, while there is none; it is then looked for again the next time.
    virtual std::shared_ptr<ADVInterface> getADV();
    /// @return a new accessor of the Ethernet PHY of a port.
    virtual std::shared_ptr<HAL::GenericEthernetPhy> getPhy(int port) = 0;
    /// @return how many OLED panels the board has; 0 unless a variant knows better.
    virtual int getOledPanelCount() const;
    /// @return a new panel, owned by the caller, who checks initOk(); empty for a board without panels.
    virtual std::unique_ptr<OledPanelInterface> getOledPanel(int index);
    /// Tells the temperature of a place on the card. @return negative when it is not known.
    virtual int GetCardTemperature(unsigned int& temperature, Enums::Temperature::Type place) = 0;
    /// @param phyID the PHY's address on the bus of the core that initMdio() found.
    /// @return a new accessor, never empty; all its accesses fail when there is no such bus or address,
    ///         which is logged here (ERROR).
    virtual std::shared_ptr<HAL::MDIO> getMdio(int phyID);

    /// @return the object built last; null when there is none, and, deliberately, as soon as any is
    /// destroyed.
    static CPInterface* getInstance() { return globalCPInterface; }

    /// Finds the MDIO master that getMdio()'s accessors use. Where there is none everything stays as it was.
    void initMdio(const char* coreName);
    /// @return a new SPI master on that FPGA core, which this object must outlive; empty when the core is
    ///         not found.
    std::shared_ptr<AlteraSpi> getSpiCore(const char* name);

    /// Reads or writes one register; the low two bits of `offset` are ignored. @return false when it does not
    /// exist: nothing mapped, or beyond its end.
    bool readFPGA(unsigned int offset, unsigned int& value) {
        if (!fpga_.has(offset)) {
            return false;
        }
        value = fpga_.word(offset);
        return true;
    }
    bool writeFPGA(unsigned int offset, unsigned int value) {
        if (!fpga_.has(offset)) {
            return false;
        }
        fpga_.word(offset) = value;
        return true;
    }

    /// Reads or writes `count` registers from `offset` (as above) upward, one access each. `buf` needs no
    /// alignment, here and below. Registers that do not exist are passed over, here and below.
    /// @return always true.
    bool readFPGA(unsigned int offset, void* buf, unsigned int count);
    bool writeFPGA(unsigned int offset, const void* buf, unsigned int count);

    /// Reads or writes `count` bytes of the register space from `offset` upward, with naturally aligned
    /// accesses only: a byte at an odd offset, then a halfword where a word does not begin, then words, at
    /// last a halfword and a byte. `count` is at least 3 where `offset` is no multiple of 4: the byte and the
    /// halfword up to the first word are moved in any case.
    void readFPGABytes(unsigned int offset, void* buf, unsigned int count);
    void writeFPGABytes(unsigned int offset, const void* buf, unsigned int count);

    /// Reads or writes a core with 16-bit data on the 32-bit bus. `count` is in units of 16 bits. Each two of
    /// them are one register and one 32-bit item of `buf`, of which the low 16 bits count; reads find them in
    /// either half of the register and clear the item's high half. An odd last unit is one 16-bit access and
    /// a 16-bit item.
    void readFPGAHalfwords(unsigned int offset, void* buf, unsigned int count);
    void writeFPGAHalfwords(unsigned int offset, const void* buf, unsigned int count);

    /// Finds word n of an FPGA core as an address; 1 is "the" address. A negative bound admits any version.
    /// @return 1, or the negative results of HAL::getPldCoreAddress, which clears the low six bits of
    ///         `address` even then.
    int getCoreAddress(const char* name, unsigned int& address, int n, int minVersion, int maxVersion);
    int getCoreAddress(const char* name, unsigned int& address, int n, int version);

    /// Finds the registers of an FPGA core's span i (0 is the first).
    /// @return the span's first register and the core's version; both zero when the core is not found or its
    ///         registers do not exist. The pointer is valid until the process ends.
    std::pair<volatile std::uint32_t*, unsigned int> getCoreRegs(const char* name, int i);

    /// Moves `length` bytes at `offset` of the card's identity ROM (see CardRom.h for what it holds) to or,
    /// when reading, from `buf`, which is written to in spite of its type: meant.
    /// @return whether all were moved; what was in the way is logged (ERROR).
    static bool transferRom(long offset, long length, const void* buf, bool write);
    /// The card's MAC addresses in the identity ROM. @return as transferRom().
    bool getMAC(BinaryData::MACAddressType type, MACAddress& address);
    bool setMAC(BinaryData::MACAddressType type, const MACAddress& address);
    /// The card's identity in the identity ROM; word 2 of the version is 0 unless it holds further numbers.
    /// @return as transferRom(); on failure nothing is changed.
    bool getCardID(Version& version, HaldenSerial& serial);
    bool SetCardID(const Version& version);
    bool SetHaldenSerial(const HaldenSerial& serial);
    /// Whether the identity ROM holds an identity: an address of the maker's (see CardRom.h), the card type
    /// of a processing card, and a valid serial. What is wrong is logged (ERROR).
    bool checkROMData();

    /// The identity that a 1-Wire EEPROM of family 0x0A holds, and that chip's ID. Blocks for its transfers.
    /// @return false, with nothing changed, when there is none that can be read.
    bool getSwitchCardID(Version& version, SerialNo& chip, HaldenSerial& serial);
    /// The card's unique number: the ID of its 1-Wire temperature sensor, or else the lowest one of all such
    /// chips. Blocks for the transfers on the bus. @return false, with a line in the log (DEBUG), when there
    /// is none; `serial` is then unchanged.
    bool getCardSerial(SerialNo& serial);

    /// The version of what is loaded in the CPLD and in the FPGA, from their "cardid" cores; word 2 is as in
    /// getCardID().
    /// @return 1; -7 without such a core; -8 when the device cannot be opened. Both are logged (DEBUG). A
    ///         device that ends early is an ERROR in the log, and what it does not hold is 0.
    int getCPLDVersion(Version& version);
    int getFPGAVersion(Version& version);

    // The central sync block. Where there is none every operation fails, or answers with zeros.

    /// @return whether there is a sync word, and the word.
    std::pair<bool, unsigned int> getSyncWord() const;
    /// The 56-bit identifiers of the network's sync master and of this card.
    std::uint64_t getSyncMaster() const;
    std::uint64_t getSyncID() const;
    /// Whether this card is the network's sync master.
    bool isSyncMaster() const;
    /// Tells the network configuration; kNoNetConfigId is passed on as 0. Logged (SERVICE).
    bool setSyncNetConfigId(NetConfigId id);
    /// Sets the time code to a second of the day, its first frame, with empty user bits. Logged (DEBUG).
    bool setVitc(int secondsOfDay);
    /// Sets the time code; the frames follow from the milliseconds, frames of 40 ms or of 1/30 s as the
    /// hardware runs. Ends when the time code was not seen to run on while it was written, and thus never
    /// where the register does not keep what is written. Logged (DEBUG).
    /// @return 1, or kNoSyncBlock.
    int setVitcData(const Vitc& time);
    /// Reads the time code. Both its words are of the same moment. Without a sync block that is logged
    /// (DEBUG).
    bool getVitcData(Vitc& time) const;

    /// Opens temperature sensors of the kernel's (hwmon). @param fds receives `n` descriptors, the caller's
    /// from then on; those that cannot be opened are negative. @return always true.
    static bool openTherm(const therm_entry* entries, int* fds, int n);
    /// Reads the temperature of an open sensor.
    /// @param value thousandths of a degree Celsius; 0x7FFFFFFF when the sensor does not answer a number.
    /// @return false on failure. A sensor that answers nothing is logged (DEBUG).
    static bool gettemp(int& value, int fd);

    /// Brings up the port for the user's own Ethernet: takes it out of reset, waits 100 ms, then sets up the
    /// PHY and after it the MAC. Blocks; both log and fail as HAL::GenericEthernetPhy and HAL::tseMacReset
    /// do.
    /// @param ctrl  offset of the port's reset register.
    /// @param base  offset of the MAC core's registers.
    /// @param jumbo, extra as for HAL::tseMacConfigure.
    /// @return false when the PHY (or a missing one) or the MAC fails; what comes after is left undone.
    bool initUserEth(unsigned long ctrl, unsigned long base, bool jumbo,
                     std::shared_ptr<HAL::GenericEthernetPhy>& phy, bool extra);
    /// Does nothing: this board's MAC keeps its speed.
    void setUserEthMACSpeed(unsigned long base, EthSpeed speed);

protected:
    CPInterface();

    /// The first register of the core that an address word of the FPGA's layout names; null when it does not
    /// exist.
    volatile std::uint32_t* registersAt(unsigned int address) const;

private:
    std::optional<SyncBlock> syncBlock() const;

    static CPInterface* globalCPInterface;

    HAL::FPGAInterface fpga_;
    HAL::GPIO gpio_;
    volatile std::uint32_t* mdio_ = nullptr;
    std::shared_ptr<ADVInterface> adv_;
};

}  // namespace Valen
