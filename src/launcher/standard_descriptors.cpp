#include "launcher/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace launcher {
namespace {

// With the lowest number that is free (open(2)).
int OpenNowhere() noexcept {
  const int opened = ::open("/dev/null", O_RDWR);
  return opened >= 0 ? opened : ::open("/", O_RDONLY);
}

}  // namespace

void OpenStandardDescriptors() noexcept {
  for (;;) {
    const int opened = OpenNowhere();
    if (opened >= 0 && opened <= STDERR_FILENO) continue;
    ::close(opened);  // If there is none, it fails, and nothing is lost.
    return;
  }
}

}  // namespace launcher
