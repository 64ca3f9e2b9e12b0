#include "launcher/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace launcher {

void OpenStandardDescriptors() noexcept {
  // The lowest number that is free is the one that open(2) gives.
  int opened = 0;
  do {
    opened = ::open("/dev/null", O_RDWR);
    if (opened < 0) opened = ::open("/", O_RDONLY | O_DIRECTORY);
  } while (opened >= 0 && opened <= STDERR_FILENO);
  ::close(opened);
}

}  // namespace launcher
