# 32-bit Windows: for hosts that are older than 64-bit automation.
set(kxjob_target i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
