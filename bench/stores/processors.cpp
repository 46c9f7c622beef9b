#include "stores/processors.h"

#include <sched.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

namespace kxjob::bench {
namespace {

bool IsThisThreadKeptTo(unsigned first, unsigned last) {
    cpu_set_t processors;
    CPU_ZERO(&processors);
    for (unsigned one = first; one <= last; ++one) CPU_SET(one, &processors);
    return sched_setaffinity(0, sizeof processors, &processors) == 0;
}

bool AreServersKeptTo(const std::string& processors) {
    const char* const stores = std::getenv("KXJOB_STORES");
    if (stores == nullptr) return true;  // somebody else's servers
    return std::system((std::string(stores) + " processors " + processors).c_str()) == 0;
}

}  // namespace

ProcessorsApart::ProcessorsApart() : processors_(std::thread::hardware_concurrency()) {
    if (processors_ < 2) return;
    if (!AreServersKeptTo("1") || !IsThisThreadKeptTo(0, 0)) {
        throw std::runtime_error("the servers and this program cannot be kept apart");
    }
}

ProcessorsApart::~ProcessorsApart() {
    if (processors_ < 2) return;
    static_cast<void>(IsThisThreadKeptTo(0, processors_ - 1));
    static_cast<void>(AreServersKeptTo("0-" + std::to_string(processors_ - 1)));
}

}  // namespace kxjob::bench
