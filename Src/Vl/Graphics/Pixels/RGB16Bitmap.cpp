#include "Vl/Graphics/Pixels/RGB16Bitmap.h"

RGB16Bitmap::~RGB16Bitmap() = default;
