#pragma once

#include <gmock/gmock.h>

#include <cstdint>

#include "Vl/HAL/Panel/OledPanelButtons.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

/// A panel whose every operation a test watches.
class MockPanel : public Valen::OledPanelInterface {
public:
    MOCK_METHOD(bool, initOk, (), (const, override));
    MOCK_METHOD(bool, getButtons, (Valen::OledPanelButtons&), (override));
    MOCK_METHOD(bool, updateScreen, (VLGraphics::OLED*), (override));
    MOCK_METHOD(bool, waitButton, (Valen::OledPanelButtons&), (override));
    MOCK_METHOD(bool, setState, (Valen::OledPanelInterface::OledState), (override));
    MOCK_METHOD(bool, isIlluminated, (), (override));
    MOCK_METHOD(int, getXres, (), (override));
    MOCK_METHOD(int, getYres, (), (override));
};

/// What the tool sends after every new frame: the character 1.
inline constexpr auto kStateOne = static_cast<Valen::OledPanelInterface::OledState>(49);

/// A poll that finds this word; its own result is of no interest to the tool.
inline auto Reads(std::uint32_t word) {
    return [word](Valen::OledPanelButtons& buttons) {
        buttons.word = word;
        return false;
    };
}

// Words as the panel composes them.
inline constexpr std::uint32_t kNothing = 0;
inline constexpr std::uint32_t kLeft = 1U << 16;
inline constexpr std::uint32_t kRight = 1U << 19;
inline constexpr std::uint32_t kRed = 1U << 22;
inline constexpr std::uint32_t kClockwise = 1U << 27;
inline constexpr std::uint32_t kCounterClockwise = 0x1FU << 27;
