# launcher_add_service_module(<name> <sources>...)
#
# Adds the target <name>: the service module lib<name>.so, which the launcher hosts with -boot=<name>. Of its symbols
# only the entry points are visible. It does not link while an entry point is missing, or while a symbol is used that
# neither the module nor a library that it is linked with defines.
function(launcher_add_service_module name)
  add_library(${name} MODULE ${ARGN})
  target_link_libraries(${name} PRIVATE launcher::service_module)
  set_target_properties(${name} PROPERTIES
    C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()
