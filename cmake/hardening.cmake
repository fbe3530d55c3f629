# What makes a fault in memory harder to abuse, for builds that are given to others: korvex_hardening
# adds it to optimised builds (a fortified C library needs the optimiser). Sanitizers bring their own
# checks.

include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckPIESupported)

add_library(korvex_hardening INTERFACE)
set(korvex_optimised_builds Release RelWithDebInfo MinSizeRel)
if(KORVEX_SANITIZE OR KORVEX_FUZZ)
  return()
endif()
list(JOIN korvex_optimised_builds "," configurations)

# Programs are loaded anywhere, like libraries.
check_pie_supported()

# A compiler may lack a flag; on another processor the protection of returns and jumps has another name.
# One that takes a flag only to warn that it ignores it lacks it, too.
set(CMAKE_REQUIRED_FLAGS -Werror)
foreach(flag
    -fstack-protector-strong
    -fstack-clash-protection
    -fcf-protection
    -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "KORVEX_HAS${flag}" has_flag)
  check_cxx_compiler_flag(${flag} ${has_flag})
  if(${has_flag})
    target_compile_options(korvex_hardening INTERFACE $<$<CONFIG:${configurations}>:${flag}>)
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)

# A distribution may define it already, with another number.
target_compile_options(korvex_hardening INTERFACE
  $<$<CONFIG:${configurations}>:-U_FORTIFY_SOURCE> $<$<CONFIG:${configurations}>:-D_FORTIFY_SOURCE=2>)

# All that the loader fills in is read-only before the program begins.
foreach(flag -Wl,-z,relro -Wl,-z,now)
  string(MAKE_C_IDENTIFIER "KORVEX_HAS${flag}" has_flag)
  check_linker_flag(CXX ${flag} ${has_flag})
  if(${has_flag})
    target_link_options(korvex_hardening INTERFACE $<$<CONFIG:${configurations}>:${flag}>)
  endif()
endforeach()
