#pragma once

/// Prints how the tool is called and ends the process with status 255.
[[noreturn]] void USAGE();
