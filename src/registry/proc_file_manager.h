#pragma once

#include <atomic>
#include <string>

namespace launcher {

/// The registry: the pid directory with its records, and the path of the hosted module. Each process has one, made on
/// first use and never destroyed, because a SIGTERM in an exit handler still needs it.
///
/// All record operations print their own lines on standard output, return 0 or -1, and are for the main thread.
class ProcFileManager {
 public:
  /// The one instance. The first call makes it, prints the pid directory and installs the SIGTERM handler; it is for
  /// the main thread. Later calls are for any thread.
  [[nodiscard]] static ProcFileManager* GetInstance();

  ProcFileManager(const ProcFileManager&) = delete;
  ProcFileManager& operator=(const ProcFileManager&) = delete;

  /// Keeps a copy of `path` as the hosted module's path. Main thread, while GetModulePath may run on another.
  void SetModulePath(const std::string& path);

  /// A copy of the module path; empty before SetModulePath. Any thread, but not in a signal handler: it allocates.
  [[nodiscard]] std::string GetModulePath() const;

  /// Records `pid` under (`procName`, `procHandle`). -1 if `pid` is not greater than 0 or memory runs out; a failure of
  /// the file system is not an error.
  [[nodiscard]] int WriteProcFile(const std::string& procName, int procHandle, int pid) const;

  /// Reads the record of (`procName`, `procHandle`) into `pid`; 0 if there is nothing to read. -1 if `pid` is then not
  /// greater than 0.
  [[nodiscard]] int ReadProcFile(const std::string& procName, int procHandle, int& pid) const;

  /// Removes the record of (`procName`, `procHandle`). If it is missing or cannot be removed, that is not an error.
  int DeleteProcFile(const std::string& procName, int procHandle) const;

 private:
  ProcFileManager();
  ~ProcFileManager() = default;

  /// Makes handle_linux_signal the action of SIGTERM. Defined in host/termination_handler.cpp, because the answer to a
  /// SIGTERM is the host's work.
  static void InstallSignalHandler();

  static std::atomic<ProcFileManager*> instance_;

  /// A pointer, so that a SIGTERM in the middle of SetModulePath finds no path or the whole path. A path that has been
  /// replaced is not freed, because another thread may be copying it.
  std::atomic<const std::string*> modulePath_ = nullptr;
  std::string pidDir_;
};

}  // namespace launcher
