# What every target of this project is compiled with; users of the library inherit none of it.
add_library(kxjob_warnings INTERFACE)
target_compile_options(kxjob_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Woverloaded-virtual -Wcast-align -Wimplicit-fallthrough
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
    # g++ 12 sees these where the standard library's own code is inlined, and they are not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-maybe-uninitialized>
    # COM interfaces have no virtual destructors: an object deletes itself.
    $<$<NOT:$<PLATFORM_ID:Windows>>:-Wnon-virtual-dtor>
    $<$<BOOL:${KXJOB_WARNINGS_AS_ERRORS}>:-Werror>)

# What the sanitizers watch: all of our own code that runs, and the tests that start threads. The other tests are left
# alone: instrumenting what mocks expand to doubles the time of a build and shows nothing about the library.
add_library(kxjob_watched INTERFACE)
target_link_libraries(kxjob_watched INTERFACE kxjob_warnings)
if(KXJOB_SANITIZER)
    target_compile_options(kxjob_watched INTERFACE
        -fsanitize=${KXJOB_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${KXJOB_SANITIZER})
endif()

# What coverage counts: the library ring.
add_library(kxjob_counted INTERFACE)
if(KXJOB_COVERAGE)
    target_compile_options(kxjob_counted INTERFACE --coverage -fprofile-abs-path -fno-inline)
    add_link_options(--coverage)
endif()
