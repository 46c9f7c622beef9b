# What the two Windows toolchains share; they set kxjob_target and CMAKE_SYSTEM_PROCESSOR.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${kxjob_target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${kxjob_target}-g++-posix)
set(CMAKE_RC_COMPILER ${kxjob_target}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${kxjob_target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
# The compiler's run-time libraries are part of each program: a machine that gets it needs system libraries only.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")
