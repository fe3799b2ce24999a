#pragma once

/// Failures of FreeType and libpng that no file can provoke. The test program is linked so that the calls
/// named here pass through LibraryFaults.cpp.
struct LibraryFaults {
    bool initFreeType = false;
    bool loadGlyph = false;
    bool renderGlyph = false;
    bool createReadStruct = false;
    bool createInfoStruct = false;

    int glyphLoads = 0;  ///< counts FT_Load_Glyph
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
