#pragma once

/// A box that text is fitted or aligned into, in pixels; 0 means no width or height is given.
struct FontSpace {
    enum Flags : int { CentreHorizontally = 1, CentreVertically = 2 };

    int width = 0;
    int height = 0;
    int flags = 0;  ///< any of Flags
};
