#pragma once

#include <ctime>
#include <string>

namespace Valen {

// Times as text, in the local time of the TZ environment variable (else of the system). A time whose year the
// calendar cannot express gives an empty text. Any thread may use these while none changes the environment.

/// Now as "21.11.26_08.30.00", fit for file names.
std::string GetTimeAsString();
/// Now as seconds since the epoch in decimal digits.
std::string GetTimeString();
/// "21.11.2026 08:30:00".
std::string TimeToString(std::time_t time);
/// "08:30:00".
std::string TimeToStringWithoutDate(std::time_t time);

}  // namespace Valen
