#pragma once

#include "Vl/Common/Enums/Loglevel.h"

/// How severe a message is; smaller is more severe. The groups decide which system log receives it.
namespace Valen::Log::SeverityLevel {

enum SeverityLevel_T : int {
    // user log
    EMERGENCY = 0,
    ALERT = 1,
    CRITICAL = 2,
    ERROR = 3,
    WARNING = 4,
    NOTICE = 5,
    INFO = 6,
    // service log
    SERVICE = 7,
    // debug log and console hook
    DEBUG = 8,
    DETAILED = 9,
    CONSOLEMIN = 10,
    CONSOLENORMAL = 11,
    CONSOLEDETAILED = 12,
    CONSOLEMAX = 13,
    // console hook only
    RAMFILE = 14,
};

/// @return the severity's name, "invalid" for a number outside 0 to 14.
const char* GetText(SeverityLevel_T level);

/// @return the level at which the syslog writer writes a message of this severity; Info for a number outside
///         0 to 14.
Enums::Loglevel::LoglevelType SeverityToLoglevel(SeverityLevel_T level);

}  // namespace Valen::Log::SeverityLevel
