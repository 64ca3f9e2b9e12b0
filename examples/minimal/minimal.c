// The smallest service: it does nothing until it is stopped.

#include <launcher/service_module.h>
#include <semaphore.h>

static sem_t stopRequested;

int Bootstrap(int argc, char** argv) {
  (void)argc;
  (void)argv;
  while (sem_wait(&stopRequested) != 0) continue;
  return 0;
}

int StopService(void) { return sem_post(&stopRequested); }
