# Compiler and linker settings that every target shares.
add_library(tagmend_options INTERFACE)
target_compile_options(tagmend_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  $<$<BOOL:${TAGMEND_WERROR}>:-Werror>
  -fno-rtti)

# A fixed load address keeps the dictionary's pointers in .rodata: nothing is relocated at start-up.
set(CMAKE_POSITION_INDEPENDENT_CODE OFF)
target_compile_options(tagmend_options INTERFACE -fno-pie)
target_link_options(tagmend_options INTERFACE -no-pie)

# What users get is optimised across the files, which hold many small functions. With tests it would
# take long, a dozen programs being linked, and hide from them what the object files hold.
if(NOT TAGMEND_TESTS)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT TAGMEND_LINK_TIME_OPTIMIZATION LANGUAGES CXX OUTPUT unsupported_because)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE ${TAGMEND_LINK_TIME_OPTIMIZATION})
endif()

if(TAGMEND_FUZZ)
  target_compile_options(tagmend_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(TAGMEND_SANITIZE)
  target_compile_options(tagmend_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1 -O1)
  target_link_options(tagmend_options INTERFACE -fsanitize=address,undefined)
else()
  # Fewer shared libraries to load make a run over single files quicker to start.
  set(TAGMEND_PROGRAM_LINK_OPTIONS -static-libstdc++ -static-libgcc -Wl,--as-needed -Wl,--gc-sections)
  target_compile_options(tagmend_options INTERFACE -ffunction-sections -fdata-sections)
endif()
