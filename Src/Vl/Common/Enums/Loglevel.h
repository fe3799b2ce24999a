#pragma once

/// The levels that the syslog writer distinguishes; every other number is written as a notice.
namespace Enums::Loglevel {

enum LoglevelType : int {
    Error = 1,
    Warning = 2,
    Info = 3,
    Debug = 4,
};

}  // namespace Enums::Loglevel
