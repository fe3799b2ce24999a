#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The alarm and event messages that users read.
namespace Enums::EventDefs {

enum EventDef_T : int {
    CoreReloading = 0,
    CardRemoved = 1,
    CardFound = 2,
    NoCoreForCard = 4,
    CardNotSupported = 5,
    TemperatureTooHigh = 11,
    TemperatureRising = 12,
    FanSpeedTooLow = 13,
    FanSpeedFalling = 14,
    VersionCheckFailed = 20,
    NoCompatibilityInformation = 21,
    UpdateCompleted = 24,
    ConnectionInterrupted = 26,
    FanControlFailed = 27,
    CardActivated = 28,
    VoltageFailure = 30,
    ConnectionCreated = 31,
    ConnectionDeleted = 32,
    RoutingFailed = 33,
    InvalidInputSignal = 34,
    UpdateRequired = 36,
    CardInitFailed = 37,
    UnsupportedSfpBandwidth = 38,
    CardInWrongSlot = 39,
    TemperatureSensorFailed = 40,
    PowerSupplyFailed = 41,
    UpdateFailed = 43,
    UpdateProgress = 45,
    FibreTooLong = 46,
    CpldWrongVersion = 48,
    SfpReceivePowerTooLow = 52,
    SfpReceivePowerTooHigh = 53,
    HighspeedLinkDown = 54,
    SfpIdUnreadable = 56,
    FibreLinkUnstable = 57,
    BackplaneSerialUnreadable = 60,
    ConnectionRerouted = 62,
    LinkAdded = 63,
    LinkRemoved = 64,
    ConnectionRemovalFailed = 67,
    SyncMasterLostSync = 68,
    NandFailed = 69,
    MadiAsynchronous = 71,
    CantorSampleRateMismatch = 72,
    HighspeedLinkErrors = 73,
    MadiCodeViolation = 74,
    CpldNotReloaded = 75,
    HardwareFailure = 76,
    QuarionCommunicationFailed = 77,
    QuarionSampleRateMismatch = 78,
    CameraPalNtscMismatch = 81,
    DuplicateNodeIdShutdown = 82,
    DuplicateNodeId = 83,
    ThirdPartyTablesDiffer = 84,
    HwDefinitionMismatch = 85,
    LineLengthError = 86,
    FieldLengthError = 87,
    UnsupportedSfp = 88,
    FanDirectionMismatch = 89,
    TooManyFramesInP2P = 90,
    TrunksInP2P = 91,
    NonP2PFramesInP2P = 92,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {CoreReloading, "Card changed / Wrong Core Version! Loading new Core..."},
    {CardRemoved, "Card removed from Slot!"},
    {CardFound, "(New) Card found in Slot!"},
    {NoCoreForCard, "No Core found for Card in Slot!"},
    {CardNotSupported, "Card in Slot is not supported by this Firmware Version!"},
    {TemperatureTooHigh, "Temperature is too high!"},
    {TemperatureRising, "Temperature is getting too high!"},
    {FanSpeedTooLow, "Fan Speed is too low!"},
    {FanSpeedFalling, "Fan Speed is getting too low!"},
    {VersionCheckFailed, "Version Checker Failed!"},
    {NoCompatibilityInformation, "No Compatibility Information found!"},
    {UpdateCompleted, "Update completed successfully!"},
    {ConnectionInterrupted, "A Connection was interrupted"},
    {FanControlFailed, "Fan Control did not work!"},
    {CardActivated, "Card activated!"},
    {VoltageFailure, "Voltage failure!"},
    {ConnectionCreated, "A Connection was created!"},
    {ConnectionDeleted, "A Connection was deleted!"},
    {RoutingFailed, "The routing of a connection failed!"},
    {InvalidInputSignal, "Invalid/Missing Input Signal!"},
    {UpdateRequired, "An update is required!"},
    {CardInitFailed, "Card initialization failed!"},
    {UnsupportedSfpBandwidth, "Unsupported SFP Bandwidth!"},
    {CardInWrongSlot, "Card is in the wrong Slot!"},
    {TemperatureSensorFailed, "Temperature sensor failed!"},
    {PowerSupplyFailed, "Power Supply Unit failed!"},
    {UpdateFailed, "Update failed!"},
    {UpdateProgress, "Update Progress"},
    {FibreTooLong, "Fiber Length exceeds SFP specification!"},
    {CpldWrongVersion, "CPLD has wrong version"},
    {SfpReceivePowerTooLow, "SFP Receive Power is too low!"},
    {SfpReceivePowerTooHigh, "SFP Receive Power is too high!"},
    {HighspeedLinkDown, "Highspeed Link is not up!"},
    {SfpIdUnreadable, "Failed to read SFP ID data!"},
    {FibreLinkUnstable, "Fiber link unstable!"},
    {BackplaneSerialUnreadable, "Firmware could not read Serial Number from backplane!"},
    {ConnectionRerouted, "A Connection was rerouted!"},
    {LinkAdded, "A link was added"},
    {LinkRemoved, "A link was removed"},
    {ConnectionRemovalFailed, "Failed to remove connection!"},
    {SyncMasterLostSync, "External Sync failed while this frame was SyncMaster!"},
    {NandFailed, "Unrecoverable NAND flash error!"},
    {MadiAsynchronous, "MADI Input is asynchronous!"},
    {CantorSampleRateMismatch, "Cantor setting / Sample Rate mismatch!"},
    {HighspeedLinkErrors, "Highspeed link errors detected!"},
    {MadiCodeViolation, "MADI Input 4B5B violation!"},
    {CpldNotReloaded, "CPLD was not reloaded since update"},
    {HardwareFailure, "Hardware failure!"},
    {QuarionCommunicationFailed, "Communication to Quarion failed!"},
    {QuarionSampleRateMismatch, "Quarion <-> Valen Sample Rate mismatch"},
    {CameraPalNtscMismatch, "Camera/Base station interface PAL/NTSC missmatch!"},  // spelled so on purpose
    {DuplicateNodeIdShutdown, "Duplicate NodeID received, shutting down communication!"},
    {DuplicateNodeId, "Duplicate NodeID received!"},
    {ThirdPartyTablesDiffer, "3rd Party master/slave tables are different!"},
    {HwDefinitionMismatch, "Frame or Card Type does not match HW Definition!"},
    {LineLengthError, "Line Length Error!"},
    {FieldLengthError, "Field Length Error!"},
    {UnsupportedSfp, "Unsupported SFP!"},
    {FanDirectionMismatch, "Fan Direction mismatch!"},
    {TooManyFramesInP2P, "Too many frames in P2P Net!"},
    {TrunksInP2P, "Trunks in P2P Net!"},
    {NonP2PFramesInP2P, "Non-P2P frames in P2P Net!"},
});

/// On purpose all calls share one buffer, in which any other number is written in decimal.
/// Such a text lasts until the next one is asked for, and two threads must not ask for them at the same time.
/// @return the value's message, else the number as said; never null.
const char* GetText(EventDef_T event);

/// @return the value whose text equals `text` exactly, -1 when there is none or it is null.
constexpr EventDef_T GetType(const char* text) {
    return static_cast<EventDef_T>(TextTable<kRows>::valueOf(text));
}

/// Whether the number is one of the enumeration's values.
constexpr bool IsValidNum(long number) {
    return TextTable<kRows>::contains(number);
}

/// One past the highest value.
constexpr int Size() {
    return TextTable<kRows>::size();
}

}  // namespace Enums::EventDefs
