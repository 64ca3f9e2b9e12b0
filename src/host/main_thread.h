#pragma once

namespace launcher {

/// From now on, the calling thread does not end by pthread_exit(3) before all others have ended but the stop thread.
/// When they have, the process ends with status 0, as after a return from `Bootstrap`. Where proc(5) is not mounted
/// nobody can see that, and the process does not end by itself. Main thread.
void KeepMainThreadUntilOthersEnd() noexcept;

}  // namespace launcher
