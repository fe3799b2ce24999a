#include "Vl/Common/Files/StandardDescriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace Valen {

void fillStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // Takes the lowest free number, which is this one; programs that are started inherit it.
            [[maybe_unused]] const int number = open("/dev/null", O_RDWR);
        }
    }
}

}  // namespace Valen
