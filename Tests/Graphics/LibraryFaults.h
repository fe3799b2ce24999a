#pragma once

/// Failures of FreeType, libpng, libjpeg and the allocator that no file can provoke. The test program is
/// linked so that the calls named here pass through LibraryFaults.cpp.
struct LibraryFaults {
    bool initFreeType = false;
    bool loadGlyph = false;
    bool renderGlyph = false;
    bool bottomUp = false;  ///< rendered bitmaps are turned to begin with their last row
    bool createReadStruct = false;
    bool createInfoStruct = false;
    bool createWriteStruct = false;
    bool noWriteContext = false;  ///< libpng's error handler finds nothing registered
    int writeInitStatus = -1;     ///< writepng_init results in this; −1 in what it should
    bool jpegStaysYcc = false;    ///< libjpeg is not to convert to RGB
    int jpegRowsLeft = -1;        ///< so many rows can still be decoded, −1 any number

    int arraysLeft = -1;  ///< so many arrays can still be allocated, −1 any number

    int glyphLoads = 0;    ///< counts FT_Load_Glyph
    int glyphRenders = 0;  ///< counts FT_Render_Glyph
};

inline LibraryFaults libraryFaults;

/// Restores faultless libraries at the end of a test.
class FaultyLibraries {
public:
    FaultyLibraries() { libraryFaults = {}; }
    ~FaultyLibraries() { libraryFaults = {}; }
    FaultyLibraries(const FaultyLibraries&) = delete;
    FaultyLibraries& operator=(const FaultyLibraries&) = delete;

    LibraryFaults* operator->() { return &libraryFaults; }
};
