// Hosts the module that the first argument names with the launcher's own stop path, but runs it in the signal handler.

#include <csignal>
#include <string>

#include "host/hosted_module.h"
#include "host/signal_answer.h"
#include "registry/proc_file_manager.h"

int main(int argc, char** argv) {
  if (argc < 2) return 1;
  const std::string path = argv[1];
  launcher::ProcFileManager::GetInstance()->SetModulePath(path);
  static_cast<void>(std::signal(SIGTERM, launcher::AnswerSignal));
  return launcher::FindBootstrap(launcher::OpenServiceModule(path), path)(argc, argv);
}
