#pragma once

/// The few questions that the board asks of its CPLD. Any thread may call these functions.
namespace Valen::HAL::cpld {

inline constexpr const char* deviceName = "cpld";
inline constexpr const char* bus_breakout_name = "bus_breakout";

/// @return 0 when the CPLD has a bus breakout core; 1 when it has none or its layout cannot be read.
int getType();

/// @return always true: a CPLD that is there is valid.
bool getValidBit();

/// Do nothing on this platform; board code calls them unconditionally.
void invalidate();
void setFpgaReloadBit();

}  // namespace Valen::HAL::cpld
