#include "Vl/Graphics/Pixels/YUVBitmap.h"

YUVBitmap::~YUVBitmap() = default;
