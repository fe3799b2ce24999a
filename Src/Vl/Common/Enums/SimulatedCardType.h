#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Vl/Common/Enums/TextTable.h"

namespace Enums {

/// The cards that the card simulator can stand for, with the hardware major identifiers that they report. A
/// name is the card's type (the identifier's highest byte, see CardType.h) and the rest of the identifier.
/// The functions are static and look into kSimulatedCards, so that nobody needs an object. Immutable; any
/// thread may use it.
class SimulatedCardType {
public:
    enum Type : int {
        Undefined = 0,
        LinkCard_300505 = 1,
        LinkCard_300605 = 2,
        CWDMCard_300805 = 3,
        CWDMCard_310805 = 4,
        CWDMCard_301005 = 5,
        CWDMCard_301805 = 6,
        ProcessingCard = 7,
        HD3G_SDICard_000113 = 8,
        HD3G_SDICard_000215 = 9,
        HD3G_SDICard_100113 = 10,
        HD3G_SDICard_100215 = 11,
        HD3G_SDICard_000608 = 12,
        HD3G_SDICard_001610 = 13,
        EthernetCard_000107 = 14,
        MADICard_313405 = 15,
        MADICard_303405 = 16,
        MADICard_323405 = 17,
        QuarionCard_303803 = 18,
        MIOCard_000A07 = 19,
        NoCard = 20,
        LinkCard_304505 = 21,
        CameraCard_200104 = 22,
        CWDMCard_300705 = 23,
        HD3G_SDICard_002606 = 24,
        AlinkCard_000104 = 25,
        numberOfEntries = 26,  ///< no card, their number
    };

    /// Fills the table of identifiers.
    constexpr SimulatedCardType()
        : majorIds_{
              0x00000000,  // Undefined
              0x08300505,  // LinkCard_300505
              0x08300605,  // LinkCard_300605
              0x09300805,  // CWDMCard_300805
              0x09310805,  // CWDMCard_310805
              0x09301005,  // CWDMCard_301005
              0x09301805,  // CWDMCard_301805
              0x00000080,  // ProcessingCard
              0x92000113,  // HD3G_SDICard_000113
              0x92000215,  // HD3G_SDICard_000215
              0x92100113,  // HD3G_SDICard_100113
              0x92100215,  // HD3G_SDICard_100215
              0x92000608,  // HD3G_SDICard_000608
              0x92001610,  // HD3G_SDICard_001610
              0xB0000107,  // EthernetCard_000107
              0x10313405,  // MADICard_313405
              0x10303405,  // MADICard_303405
              0x10323405,  // MADICard_323405
              0x11303803,  // QuarionCard_303803
              0xA0000A07,  // MIOCard_000A07
              0x000000FF,  // NoCard
              0x08304505,  // LinkCard_304505
              0x95200104,  // CameraCard_200104
              0x09300705,  // CWDMCard_300705
              0x92002606,  // HD3G_SDICard_002606
              0xA1000104,  // AlinkCard_000104
          } {}

    /// @return the card's identifier; 0 for a number that is no card.
    static constexpr std::uint32_t GetMajorForType(Type card);

    /// @return the first card with this identifier, 0 (Undefined) when there is none.
    static constexpr Type GetTypeForMajorID(std::uint32_t majorId);

    /// @return the card's name, "unknown" for a number that is no card.
    static constexpr const char* GetText(Type card) { return TextTable<kRows>::textOf(card); }

    /// @return the card whose name equals `text` exactly, -1 when there is none or it is null.
    static constexpr Type GetType(const char* text) {
        return static_cast<Type>(TextTable<kRows>::valueOf(text));
    }

    /// Whether the number is one of the cards.
    static constexpr bool IsValidNum(long number) { return TextTable<kRows>::contains(number); }

    /// The number of cards.
    static constexpr int Size() { return TextTable<kRows>::size(); }

private:
    static constexpr auto kRows = std::to_array<TextRow>({
        {Undefined, "Undefined"},
        {LinkCard_300505, "LinkCard_300505"},
        {LinkCard_300605, "LinkCard_300605"},
        {CWDMCard_300805, "CWDMCard_300805"},
        {CWDMCard_310805, "CWDMCard_310805"},
        {CWDMCard_301005, "CWDMCard_301005"},
        {CWDMCard_301805, "CWDMCard_301805"},
        {ProcessingCard, "ProcessingCard"},
        {HD3G_SDICard_000113, "HD3G_SDICard_000113"},
        {HD3G_SDICard_000215, "HD3G_SDICard_000215"},
        {HD3G_SDICard_100113, "HD3G_SDICard_100113"},
        {HD3G_SDICard_100215, "HD3G_SDICard_100215"},
        {HD3G_SDICard_000608, "HD3G_SDICard_000608"},
        {HD3G_SDICard_001610, "HD3G_SDICard_001610"},
        {EthernetCard_000107, "EthernetCard_000107"},
        {MADICard_313405, "MADICard_313405"},
        {MADICard_303405, "MADICard_303405"},
        {MADICard_323405, "MADICard_323405"},
        {QuarionCard_303803, "QuarionCard_303803"},
        {MIOCard_000A07, "MIOCard_000A07"},
        {NoCard, "NoCard"},
        {LinkCard_304505, "LinkCard_304505"},
        {CameraCard_200104, "CameraCard_200104"},
        {CWDMCard_300705, "CWDMCard_300705"},
        {HD3G_SDICard_002606, "HD3G_SDICard_002606"},
        {AlinkCard_000104, "AlinkCard_000104"},
    });

    static_assert(kRows.size() == numberOfEntries, "a name for every card");

    std::array<std::uint32_t, numberOfEntries> majorIds_;
};

/// The table that all look into.
inline constexpr SimulatedCardType kSimulatedCards;

constexpr std::uint32_t SimulatedCardType::GetMajorForType(Type card) {
    return IsValidNum(card) ? kSimulatedCards.majorIds_[static_cast<std::size_t>(card)] : 0;
}

constexpr SimulatedCardType::Type SimulatedCardType::GetTypeForMajorID(std::uint32_t majorId) {
    const auto& majorIds = kSimulatedCards.majorIds_;
    const auto found = std::find(majorIds.begin(), majorIds.end(), majorId);
    return found == majorIds.end() ? Undefined : static_cast<Type>(found - majorIds.begin());
}

}  // namespace Enums
