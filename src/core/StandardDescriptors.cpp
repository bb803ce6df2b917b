#include "core/StandardDescriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace orx {

void occupyStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) == -1) ::open("/dev/null", O_RDWR);
    }
}

}  // namespace orx
