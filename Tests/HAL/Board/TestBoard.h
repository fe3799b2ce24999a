#pragma once

#include "Vl/HAL/Board/CPInterface.h"

/// The control processor alone, as no variant.
class TestBoard : public Valen::CPInterface {};
