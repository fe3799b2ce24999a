#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What a card or a frame raises as an error or a warning, in three bands: card and frame errors below 100,
/// stateless errors (SL_) from 100, connection errors (CO_) from 200.
namespace Enums::ErrorId {

enum Type : int {
    none = 0,
    UpdateRequired = 1,
    InitFailed = 2,
    HWFailure = 3,
    TemperatureHigh = 4,
    TemperatureSensor = 5,
    FanSpeed = 6,
    FanControl = 7,
    FanDirection = 8,
    PSU = 9,
    Voltage = 10,
    CardCommunication = 11,
    QuarionCommunication = 12,
    WrongSlotType = 13,
    SyncIn = 14,
    HWDefMismatch = 15,
    SampleRateMsimatch = 16,  ///< spelled so on purpose: the key is known outside
    InvalidInputSignal = 17,
    CameraPalNtscMismatch = 18,
    UnsupportedSFP = 19,
    WrongSFPBandwidth = 20,
    FiberLength = 21,
    SFPRXLow = 22,
    SFPRXHigh = 23,
    LinkUnstable = 24,
    TooManyFrames = 25,
    TrunksInP2P = 26,
    P2PFrameType = 27,
    MADIasync = 28,
    SFPIdRead = 29,
    PtpOffsetWarning = 31,
    PtpOffsetError = 32,
    TXBandwidthTooHigh = 33,
    MediaPortSubnetMismatch = 34,
    SL_DuplicateNodeId = 101,
    SL_CardCommunication = 102,
    SL_MADI4B5B = 103,
    SL_VideoLineLength = 104,
    SL_VideoFieldLength = 105,
    SL_DuplicateIPConfig = 106,
    SL_NmosConnect = 107,
    CO_Interrupted = 200,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {none, "none"},
    {UpdateRequired, "UpdateRequired"},
    {InitFailed, "InitFailed"},
    {HWFailure, "HWFailure"},
    {TemperatureHigh, "TemperatureHigh"},
    {TemperatureSensor, "TemperatureSensor"},
    {FanSpeed, "FanSpeed"},
    {FanControl, "FanControl"},
    {FanDirection, "FanDirection"},
    {PSU, "PSU"},
    {Voltage, "Voltage"},
    {CardCommunication, "CardCommunication"},
    {QuarionCommunication, "QuarionCommunication"},
    {WrongSlotType, "WrongSlotType"},
    {SyncIn, "SyncIn"},
    {HWDefMismatch, "HWDefMismatch"},
    {SampleRateMsimatch, "SampleRateMsimatch"},
    {InvalidInputSignal, "InvalidInputSignal"},
    {CameraPalNtscMismatch, "CameraPalNtscMismatch"},
    {UnsupportedSFP, "UnsupportedSFP"},
    {WrongSFPBandwidth, "WrongSFPBandwidth"},
    {FiberLength, "FiberLength"},
    {SFPRXLow, "SFPRXLow"},
    {SFPRXHigh, "SFPRXHigh"},
    {LinkUnstable, "LinkUnstable"},
    {TooManyFrames, "TooManyFrames"},
    {TrunksInP2P, "TrunksInP2P"},
    {P2PFrameType, "P2PFrameType"},
    {MADIasync, "MADIasync"},
    {SFPIdRead, "SFPIdRead"},
    {30, kNoText},  // in use, without a text on purpose
    {PtpOffsetWarning, "PtpOffsetWarning"},
    {PtpOffsetError, "PtpOffsetError"},
    {TXBandwidthTooHigh, "TXBandwidthTooHigh"},
    {MediaPortSubnetMismatch, "MediaPortSubnetMismatch"},
    {SL_DuplicateNodeId, "SL_DuplicateNodeId"},
    {SL_CardCommunication, "SL_CardCommunication"},
    {SL_MADI4B5B, "SL_MADI4B5B"},
    {SL_VideoLineLength, "SL_VideoLineLength"},
    {SL_VideoFieldLength, "SL_VideoFieldLength"},
    {SL_DuplicateIPConfig, "SL_DuplicateIPConfig"},
    {SL_NmosConnect, "SL_NmosConnect"},
    {CO_Interrupted, "CO_Interrupted"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ErrorId
