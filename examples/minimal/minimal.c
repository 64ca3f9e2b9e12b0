// The smallest service: it waits until it is stopped.

#include <launcher/service_module.h>
#include <pthread.h>
#include <stdbool.h>
#include <stdio.h>

// Initialised statically, since StopService may be called before Bootstrap.
static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
static pthread_cond_t stopRequested = PTHREAD_COND_INITIALIZER;
static bool stopped = false;

int Bootstrap(int argc, char** argv) {
  printf("%s runs, with %d parameters\n", argv[0], argc - 1);
  (void)fflush(stdout);
  pthread_mutex_lock(&mutex);
  while (!stopped) pthread_cond_wait(&stopRequested, &mutex);
  pthread_mutex_unlock(&mutex);
  puts("minimal ends");
  return 0;
}

int StopService(void) {
  pthread_mutex_lock(&mutex);
  stopped = true;
  pthread_mutex_unlock(&mutex);
  pthread_cond_signal(&stopRequested);
  return 0;
}
