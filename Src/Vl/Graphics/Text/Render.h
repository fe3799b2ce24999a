#pragma once

namespace TextRender {

class Face;

/// Loading of fonts. The FreeType library handle behind it is one per process, made on first use and never
/// released. Not thread-safe, like all text rendering.
namespace Render {

/// Makes the library handle if there is none. On failure says "Unable to init Freetype lib!" on standard
/// error and returns false.
bool Init();

/// Loads the first face of a font file into `face`, in place of its earlier one; the size becomes −1.
/// Returns false, with `face` unchanged, when the library or the file cannot be used. Blocks on the file.
bool NewFace(const char* path, Face& face);

}  // namespace Render
}  // namespace TextRender
