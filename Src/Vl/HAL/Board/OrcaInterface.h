#pragma once

#include <array>
#include <memory>

#include "Vl/HAL/Board/HD24Interface.h"
#include "Vl/HAL/Board/VersionsRecord.h"
#include "Vl/HAL/Bus/I2CSlave.h"
#include "Vl/HAL/Chips/OrcaResetIOs.h"
#include "Vl/HAL/Chips/Sx1509b.h"

namespace Valen {

class ADVInterface;

/// The newer board: one OLED panel on the cores "subsys_hps_oled_spi" and "subsys_hps_oled_io_spi",
/// temperature registers in the FPGA, and on the I2C buses temperature sensors, seven I/O expanders, the
/// video chip and an EEPROM. Its configuration PHYs are DP83867IS.
///
/// As HD24Interface: what is missing is logged at construction and its accessors fail later. One thread at a
/// time uses what is on the I2C buses. Reads of a temperature also tell its limit, above which the board is
/// too warm; the limit is set even when the reading fails.
class OrcaInterface : public HD24Interface {
public:
    // Names in the I2C registry.
    static constexpr const char* LED_SYNC_DEVICE_NAME = "led_sync";
    static constexpr const char* ETH_LED_DEVICE_NAME = "eth_led";
    static constexpr const char* FAN_DEVICE_NAME = "fan";
    static constexpr const char* SYN_ETH_DEVICE_NAME = "syn_eth";
    static constexpr const char* PSU_DEVICE_NAME = "psu";
    static constexpr const char* ADV_DEVICE_NAME = "video_enc";

    /// The two colours of a power supply's LED: 0 drives its pin low, any other value high.
    enum PSULedColorType : int {
        PinLow = 0,
        PinHigh = 1,
    };

    /// Finds the FPGA's cores and sets the expanders up.
    /// @param link as for HD24Interface.
    explicit OrcaInterface(CPLinkInterface* link);
    ~OrcaInterface() override;

    /// A new accessor of the video chip "video_enc"; never empty, with a log line when it cannot be opened.
    std::shared_ptr<ADVInterface> getADV() override;
    int getOledPanelCount() const override;
    /// As HD24Interface's, on this board's cores.
    std::unique_ptr<OledPanelInterface> getOledPanel(int index) override;

    /// @param which 0: the FPGA, 1 and 2: its transceiver tiles; any other fails, without a limit.
    bool getFPGATemperature(int which, int& celsius, int& limit);
    /// @return false for a null register.
    static bool getTemperatureSerial(const volatile orca_misc_pio_ctrl* reg, int& celsius);

    // Sensors on I2C.
    bool getSDITemperature(int& celsius, int& limit);
    bool getFanTemperature(int& celsius, int& limit);
    bool getOledTemperature(int& celsius, int& limit);
    bool getETHTemperature(int& celsius, int& limit);
    /// Reads the sensor at `address` of a bus; see Lm75::read.
    static bool get752ATemperature(I2CSlave& bus, int address, int& celsius);

    /// An expander, open or not, owned by the board.
    /// @param cage, index 0 or 1 each; they are not checked.
    Sx1509b* getQsfpIo(int cage, int index);
    Sx1509b* getSyncIo() { return &syncIo_; }
    /// The board's reset signals, owned by the board.
    OrcaResetIOs* getResetIOs() { return resetIos_.get(); }

    /// Sets the LED of power supply 0 or 1. @return false for any other and for an expander that fails.
    bool setPsuModuledLed(int module, PSULedColorType colour);

    /// Has the supply cycle the board's power at the next reboot: appends the command for it to the script
    /// that the platform runs before. @return false when the script cannot be written.
    static bool requestPowerCycleBoot();

    /// As HD24Interface's, but the PHY at address `index` behind eth0: meant.
    std::shared_ptr<HAL::GenericEthernetPhy> getConfigEthPhy(int index);

    /// Reads the EEPROM "eeprom/eeprom" of the I2C registry. @return all zero where it cannot be read.
    static VersionsRecord getVersions();

private:
    // The construction, step by step; each goes on whatever came before.
    void findTemperatureRegisters();
    void openSdiSensor();
    void openSensorBuses();
    void openQsfpExpanders();
    void setUpQsfpExpanders();
    void openSyncExpander();
    void setUpSyncExpander();
    void openEthLedExpander();

    // Of the FPGA and its two tiles.
    std::array<const volatile orca_misc_pio_ctrl*, 3> pioTemp_ = {};
    int sdiTempAddress_ = 0;
    I2CSlave sdiTempI2c_;
    I2CSlave fanI2c_;
    I2CSlave synEthI2c_;
    std::array<Sx1509b, 4> qsfpIo_;
    Sx1509b syncIo_;
    std::unique_ptr<OrcaResetIOs> resetIos_;
    Sx1509b ethLedIo_;
};

}  // namespace Valen
