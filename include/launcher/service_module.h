#ifndef LAUNCHER_SERVICE_MODULE_H
#define LAUNCHER_SERVICE_MODULE_H

#ifdef __cplusplus
extern "C" {
#endif

__attribute__((visibility("default"))) int Bootstrap(int argc, char** argv);
__attribute__((visibility("default"))) int StopService(void);

#ifdef __cplusplus
}
#endif

#endif
