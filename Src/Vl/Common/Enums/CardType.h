#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The kind of card in a frame slot, as the card's identity memory holds it in one byte.
namespace Enums::CardType {

enum Type : int {
    Undefined = 0,
    ControlCard = 1,
    FanUnit = 2,
    Backplane = 3,
    OLEDUnit = 4,
    LEDFront = 5,
    GPIOCard = 6,
    AIOCard = 7,
    LinkCard = 8,
    CWDMCard = 9,
    MADICard = 16,
    QuarionCard = 17,
    TestAdapter = 18,
    Evalboard = 119,
    ProcessingCard = 128,
    SD_SDICard = 144,
    HD_SDICard = 145,
    HD3G_SDICard = 146,
    DVICard = 147,
    DPCard = 148,
    CameraCard = 149,
    MIOCard = 160,
    AlinkCard = 161,
    EthernetCard = 176,
    DEBUGCard = 221,
    Evalboard_FPGA = 247,
    uControllerFW = 252,
    PPC_FW = 253,
    PCSoftware = 254,
    NoCard = 255,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Undefined, "Undefined"},
    {ControlCard, "ControlCard"},
    {FanUnit, "FanUnit"},
    {Backplane, "Backplane"},
    {OLEDUnit, "OLEDUnit"},
    {LEDFront, "LEDFront"},
    {GPIOCard, "GPIOCard"},
    {AIOCard, "AIOCard"},
    {LinkCard, "LinkCard"},
    {CWDMCard, "CWDMCard"},
    {MADICard, "MADICard"},
    {QuarionCard, "QuarionCard"},
    {TestAdapter, "TestAdapter"},
    {Evalboard, "Evalboard"},
    {ProcessingCard, "ProcessingCard"},
    {SD_SDICard, "SD_SDICard"},
    {HD_SDICard, "HD_SDICard"},
    {HD3G_SDICard, "HD3G_SDICard"},
    {DVICard, "DVICard"},
    {DPCard, "DPCard"},
    {CameraCard, "CameraCard"},
    {MIOCard, "MIOCard"},
    {AlinkCard, "AlinkCard"},
    {EthernetCard, "EthernetCard"},
    {DEBUGCard, "DEBUGCard"},
    {Evalboard_FPGA, "Evalboard_FPGA"},
    {uControllerFW, "uControllerFW"},
    {PPC_FW, "PPC_FW"},
    {PCSoftware, "PCSoftware"},
    {NoCard, "NoCard"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::CardType
