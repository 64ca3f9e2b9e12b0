#include "registry/proc_file_manager.h"

#include <unistd.h>

#include <cstdio>

#include "registry/pid_dir.h"
#include "registry/pid_record.h"

namespace launcher {

constinit std::atomic<ProcFileManager*> ProcFileManager::instance_ = nullptr;

ProcFileManager* ProcFileManager::GetInstance() {
  ProcFileManager* const instance = instance_.load(std::memory_order_acquire);
  return instance != nullptr ? instance : new ProcFileManager;  // The constructor publishes it.
}

ProcFileManager::ProcFileManager() : pidDir_(GetPidDir()) {
  // Complete now, and published before the handler is there to ask for it: a SIGTERM never finds half an instance, and
  // never makes a second one.
  instance_.store(this, std::memory_order_release);
  InstallSignalHandler();
}

void ProcFileManager::SetModulePath(const std::string& path) {
  modulePath_.store(new std::string(path), std::memory_order_release);
}

std::string ProcFileManager::GetModulePath() const {
  const std::string* const path = modulePath_.load(std::memory_order_acquire);
  return path != nullptr ? *path : std::string();
}

int ProcFileManager::WriteProcFile(const std::string& procName, int procHandle, int pid) const {
  if (pid <= 0) {
    std::printf("Error: write proc name handle %s %d but osprocid %d invalid!\n", procName.c_str(), procHandle, pid);
    return -1;
  }
  const std::string path = PidRecordPath(pidDir_, procName, procHandle);
  try {
    std::printf("write %s : iOSProcessID:%d\n", path.c_str(), pid);
    WritePidRecord(path, pid);
  } catch (...) {
    std::printf("Error: write proc name handle %s %d osprocid %d failed!\n", procName.c_str(), procHandle, pid);
    return -1;
  }
  return 0;
}

int ProcFileManager::ReadProcFile(const std::string& procName, int procHandle, int& pid) const {
  pid = 0;
  const std::string path = PidRecordPath(pidDir_, procName, procHandle);
  try {
    pid = ReadPidRecord(path);
    std::printf("read %s : iOSProcessID:%d\n", path.c_str(), pid);
  } catch (...) {
    std::printf("Error: read proc name handle %s %d osprocid %d failed!\n", procName.c_str(), procHandle, pid);
    return -1;
  }
  if (pid > 0) return 0;
  std::printf("Error: read proc name handle %s %d but osprocid %d invalid!\n", procName.c_str(), procHandle, pid);
  return -1;
}

int ProcFileManager::DeleteProcFile(const std::string& procName, int procHandle) const {
  const std::string path = PidRecordPath(pidDir_, procName, procHandle);
  try {
    std::printf("delete %s\n", path.c_str());
    ::unlink(path.c_str());  // A record that is already gone, or that we may not remove, is not an error.
  } catch (...) {
    std::printf("Error: delete proc name handle %s %d failed!\n", procName.c_str(), procHandle);
    return -1;
  }
  return 0;
}

}  // namespace launcher
