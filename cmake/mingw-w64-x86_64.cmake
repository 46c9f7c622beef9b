# 64-bit Windows, cross-compiled by Debian's mingw-w64 with posix threads (std::mutex and std::thread need them).
set(kxjob_target x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
