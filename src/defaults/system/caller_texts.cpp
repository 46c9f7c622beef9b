#include "kxjob/caller_texts.h"

#include "collaborators/this_thread.h"

namespace kxjob {

std::string NewGuid() {
    return ThisThread().Guids().NewGuid();
}

std::string NowISODateTime() {
    return ThisThread().Times().NowISODateTime();
}

}  // namespace kxjob
