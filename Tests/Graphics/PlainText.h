#pragma once

#include <cstdint>
#include <string>

#include "Tests/Graphics/PlainFrame.h"

struct FT_FaceRec_;
struct FT_LibraryRec_;

inline constexpr const char* kTestFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// Text drawn by asking FreeType for every glyph every time, in plain loops, to compare the product with.
/// Knows no icons. Throws where FreeType fails.
class PlainText {
public:
    PlainText();
    ~PlainText();
    PlainText(const PlainText&) = delete;
    PlainText& operator=(const PlainText&) = delete;

    void setPoints(int points);
    int capHeight() const { return capHeight_; }

    /// Width in 1/64 pixels of a single line.
    int unitsWide(const std::string& line);
    /// Width in whole pixels of a single line, each advance cut down to whole pixels.
    int pixelsWide(const std::string& line);

    void draw(PlainFrame& frame, const std::string& text, int x, int y, uint32_t colour, int maxX, int cell);

private:
    FT_LibraryRec_* library_ = nullptr;
    FT_FaceRec_* face_ = nullptr;
    int points_ = 0;
    int capHeight_ = 0;
};
