# The author's kit for service modules: the target launcher::service_module and launcher_add_service_module().
include(${CMAKE_CURRENT_LIST_DIR}/launcher-targets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/launcher_add_service_module.cmake)
