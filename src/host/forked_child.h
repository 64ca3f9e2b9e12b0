#pragma once

#include <sys/types.h>

namespace launcher {

/// Tells a process from those that it was forked off. Two signs, as each misses a child: one in a pid namespace of its
/// own may have its parent's id, and one that fork(3) has not made runs no handlers of pthread_atfork(3).
struct ProcessSigns {
  pid_t id;
  unsigned forks;  // since NoticeForks
  bool operator==(const ProcessSigns&) const = default;
};

/// Those of this process. Any thread, also in a signal handler.
[[nodiscard]] ProcessSigns ThisProcess() noexcept;

/// Makes this process the one that IsForkedChild tells its children from. Once each process.
void NoticeForks() noexcept;

/// Whether this process was forked off one that called NoticeForks, and has executed no other program since. Any
/// thread, also in a signal handler.
[[nodiscard]] bool IsForkedChild() noexcept;

}  // namespace launcher
