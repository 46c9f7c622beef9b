# What every target of this project is compiled with; users of the library inherit none of it.
add_library(kxjob_warnings INTERFACE)
target_compile_options(kxjob_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wduplicated-cond -Wimplicit-fallthrough
    # g++ 12 sees these where the standard library's own code is inlined, and they are not there.
    -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-maybe-uninitialized
    $<$<BOOL:${KXJOB_WARNINGS_AS_ERRORS}>:-Werror>)

if(KXJOB_SANITIZER)
    add_compile_options(-fsanitize=${KXJOB_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${KXJOB_SANITIZER})
endif()

if(KXJOB_COVERAGE)
    add_compile_options(--coverage -fprofile-abs-path -fno-inline)
    add_link_options(--coverage)
endif()
