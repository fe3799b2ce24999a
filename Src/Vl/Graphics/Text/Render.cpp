#include "Vl/Graphics/Text/Render.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdio>

#include "Vl/Graphics/Text/Face.h"

namespace TextRender::Render {

namespace {
FT_Library library = nullptr;
}

bool Init() {
    if (library != nullptr || FT_Init_FreeType(&library) == 0) {
        return true;
    }
    library = nullptr;
    std::fputs("Unable to init Freetype lib!\n", stderr);
    return false;
}

bool NewFace(const char* path, Face& face) {
    if (!Init()) {
        return false;
    }
    FT_Face loaded = nullptr;
    if (FT_New_Face(library, path, 0, &loaded) != 0) {
        return false;
    }
    face.Init(loaded);
    return true;
}

}  // namespace TextRender::Render
