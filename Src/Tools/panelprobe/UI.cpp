#include "Tools/panelprobe/UI.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "Tools/panelprobe/Colours.h"
#include "Vl/Common/Files/DirUtil.h"

namespace {

constexpr int kExitNoPanel = -2;
constexpr int kExitNoFont = -1;

constexpr int kFontSize = 14;
/// Distance of each line from the panel's middle row.
constexpr int kLineOffset = 7;

const char* fontDirectory() {
    constexpr const char* installed = "/opt/pattern/oled/";
    return Valen::DirUtil::IsDir(installed) ? installed : ".";
}

}  // namespace

UI::UI() : board(nullptr) {
    panel = board.getOledPanel(0);
    if (!panel) {
        std::puts("unable to get panel");
        std::exit(kExitNoPanel);
    }
    const int width = panel->getXres();
    const int height = panel->getYres();
    oled = std::make_unique<VLGraphics::OLED>(width, height);

    const char* directory = fontDirectory();
    // The installed directory's own slash makes it two; harmless, and kept.
    const std::string font = std::string(directory) + "/Font.ttf";
    if (!Valen::DirUtil::FileExists(font.c_str())) {
        std::puts("Cannot find Font.ttf");
    }
    if (!oled->init(directory)) {
        std::printf("init failed for path: %s\n", directory);
        std::exit(kExitNoFont);
    }
}

void UI::print(const char* line1, const char* line2, rgba background) {
    if (!panel) {
        return;
    }
    Bitmap& bitmap = oled->getBmp();
    bitmap.setVerticalAlignment(VerticalAlignment::Centred);
    bitmap.setHorizontalAlignment(HorizontalAlignment::Centred);
    oled->fill(background);
    oled->getFont().SetSize(kFontSize);
    drawCentred(line1, -kLineOffset);
    drawCentred(line2, kLineOffset);
    panel->updateScreen(oled.get());
    panel->setState(Valen::OledPanelInterface::kFrameShown);
}

void UI::drawCentred(const char* line, int rowsBelowMiddle) {
    Bitmap& bitmap = oled->getBmp();
    bitmap.setPosition(bitmap.getWidth() / 2, bitmap.getHeight() / 2 + rowsBelowMiddle);
    oled->getFont().RenderAligned(line, bitmap, kWhite, FontSpace{}, kBlack, 0);
}
