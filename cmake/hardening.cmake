# The flags with which Debian builds programs that face the world, for its packages too: the tools of Debian 12 leave
# out the last three, of which each compiler and architecture takes some.
include(CheckCXXCompilerFlag)

add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -Wformat -Werror=format-security)
set(CMAKE_REQUIRED_FLAGS -Werror)  # Clang only warns of a flag that does nothing.
foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER takes${flag} takes)
  check_cxx_compiler_flag(${flag} ${takes})
  if(${takes})
    add_compile_options(${flag})
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)
