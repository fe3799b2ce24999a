#include "Vl/Graphics/OLED.h"

#include <string>

#include "Vl/Graphics/Text/Render.h"

namespace VLGraphics {

OLED::OLED(int w, int h) : frame_(w, h) {}

OLED::~OLED() = default;

bool OLED::init(const char* directory) {
    if (directory == nullptr) {
        return false;
    }
    return TextRender::Render::NewFace((std::string(directory) + "/Font.ttf").c_str(), font_);
}

int OLED::getBufferSize() const {
    return frame_.getBuffer().count() * static_cast<int>(sizeof(uint16_t));
}

void OLED::clear() {
    fill(0x800000c8);  // red on purpose
}

void OLED::fill(rgba colour) {
    frame_.setPosition(0, 0);
    frame_.FillRect(frame_.getWidth(), frame_.getHeight(), colour);
}

}  // namespace VLGraphics
