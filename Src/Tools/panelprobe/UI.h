#pragma once

#include <memory>

#include "Vl/Graphics/OLED.h"
#include "Vl/Graphics/Pixels/Rgba.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

/// The tool's screen: the board, its front panel and a frame buffer of the panel's resolution with a loaded
/// font. Once built it is complete; what is missing ends the process in the constructor. Single-threaded.
class UI {
public:
    /// Opens board and panel and loads "Font.ttf" from "/opt/pattern/oled/" or, without that directory, from
    /// the working directory. Without a panel says so and ends the process with status 254, without a usable
    /// font with status 255.
    UI();
    UI(const UI&) = delete;
    UI& operator=(const UI&) = delete;

    /// Shows two lines of white text, centred, on `background`. Does nothing without a panel.
    void print(const char* line1, const char* line2, rgba background);

    std::unique_ptr<Valen::OledPanelInterface> panel;
    std::unique_ptr<VLGraphics::OLED> oled;
    Valen::OrcaInterface board;

private:
    void drawCentred(const char* line, int rowsBelowMiddle);
};
