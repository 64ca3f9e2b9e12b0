#pragma once

#include <atomic>
#include <string>

namespace launcher {

/// The process's registry: the pid directory with its records, and the path of the hosted module. There is one for each
/// process, made on first use and never destroyed, because a SIGTERM may need it as late as in exit handlers.
///
/// All record operations print their own lines on standard output, return 0 or -1, and are for the main thread.
class ProcFileManager {
 public:
  /// The one instance. The first call makes it, which prints the pid directory and installs the SIGTERM handler, and is
  /// for the main thread; later calls may come from any thread.
  [[nodiscard]] static ProcFileManager* GetInstance();

  ProcFileManager(const ProcFileManager&) = delete;
  ProcFileManager& operator=(const ProcFileManager&) = delete;

  /// Keeps a copy of `path` as the hosted module's path. Main thread, while GetModulePath may run on another.
  void SetModulePath(const std::string& path);

  /// A copy of the module path; empty before SetModulePath. Any thread, but not in a signal handler: it allocates.
  [[nodiscard]] std::string GetModulePath() const;

  /// Records `pid` under (`procName`, `procHandle`). -1 when `pid` is not greater than 0; a record that the file system
  /// refuses is not an error.
  [[nodiscard]] int WriteProcFile(const std::string& procName, int procHandle, int pid) const;

  /// Reads the record of (`procName`, `procHandle`) into `pid`, which is 0 when there is nothing to read. -1 when `pid`
  /// is then not greater than 0.
  [[nodiscard]] int ReadProcFile(const std::string& procName, int procHandle, int& pid) const;

  /// Removes the record of (`procName`, `procHandle`); one that is missing or stays is not an error.
  int DeleteProcFile(const std::string& procName, int procHandle) const;

 private:
  ProcFileManager();
  ~ProcFileManager() = default;

  /// Makes handle_linux_signal the action of SIGTERM. The host defines it, in host/termination_handler.cpp: what a
  /// SIGTERM sets off is its work.
  static void InstallSignalHandler();

  static std::atomic<ProcFileManager*> instance_;

  /// Behind a pointer so that a SIGTERM in the middle of SetModulePath finds no path or the whole path. A path that was
  /// replaced is not freed: somebody may be copying it.
  std::atomic<const std::string*> modulePath_ = nullptr;
  std::string pidDir_;
};

}  // namespace launcher
