#pragma once

namespace launcher {

/// Makes this process the one that IsForkedChild tells its children from. Once each process.
void NoticeForks() noexcept;

/// Whether this process was forked off one that called NoticeForks, and has executed no other program since. Any
/// thread, also in a signal handler.
[[nodiscard]] bool IsForkedChild() noexcept;

}  // namespace launcher
