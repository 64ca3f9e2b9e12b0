// The smallest service in Python, inside a module in C: it waits until it is stopped.
//
//     cc -shared -fPIC -o libagent.so agent.c $(pkg-config --cflags --libs launcher python3-embed)

#include <Python.h>
#include <launcher/service_module.h>
#include <signal.h>
#include <sys/eventfd.h>

// The wait releases the interpreter's lock, and leaves the descriptor readable for others that look at it.
static const wchar_t service[] =
    L"import select, sys\n"
    L"print(sys.argv[0], 'runs, with', len(sys.argv) - 1, 'parameters', flush=True)\n"
    L"select.select([stopRequested], [], [])\n"
    L"print('agent ends')\n";

// There before anybody can call StopService, which may come when Python does not run yet, or no more.
static int stopRequested;
__attribute__((constructor)) static void Prepare(void) { stopRequested = eventfd(0, EFD_CLOEXEC); }

int Bootstrap(int argc, char** argv) {
  PyConfig config;
  PyConfig_InitPythonConfig(&config);
  config.install_signal_handlers = 0;
  (void)signal(SIGPIPE, SIG_IGN);  // Python does not now, and a client that hangs up would end the service.
  config.parse_argv = 0;
  config.safe_path = 1;  // Modules come from PYTHONPATH, and not from the launcher's directory.
  PyConfig_SetBytesArgv(&config, argc, argv);
  PyConfig_SetString(&config, &config.run_command, service);
  const PyStatus status = Py_InitializeFromConfig(&config);
  PyConfig_Clear(&config);
  if (PyStatus_Exception(status)) {
    puts(status.err_msg);
    return 1;
  }
  PyModule_AddIntConstant(PyImport_AddModule("__main__"), "stopRequested", stopRequested);
  return Py_RunMain();
}

int StopService(void) { return eventfd_write(stopRequested, 1); }
