#pragma once

#include <string>

#include "launcher/params.h"

namespace launcher {

/// One launcher process: who it is, and with what parameters it was started. The pair (`procName`, `procHandle`) is the
/// identity under which it is registered and stopped.
struct LaunchContext {
  /// Sets every field to 0, false or empty.
  void Clear();

  /// Takes the program path as the caller gave it (argv[0]), prints it and its parts, and sets `exeDir`, `procName`
  /// and, for an executable named "java", `javaFlag`.
  void SetProcFilePath(const std::string& strProcFilePath);

  /// Sets `procHandle` from `params`: the second of two values of "agentlable", or else the only value of "p". If
  /// `procName` is "java", the first value of "Dprocname" gives both `procName` and `procHandle` instead, and a missing
  /// "Dprocname" is added to `params`. Call it after SetProcFilePath and ParseParams.
  void ResolveProcIdentity();

  /// Sets `pid` to that of this process.
  void SetOwnPid();

  int pid = 0;
  std::string exeDir;
  bool javaFlag = false;
  std::string procName;
  int procHandle = 0;
  ParamMap params;
};

}  // namespace launcher
