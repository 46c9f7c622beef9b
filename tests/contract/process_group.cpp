#include "contract/process_group.h"

#include <pthread.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <iostream>
#include <system_error>
#include <vector>

namespace kxjob::testing_support {

struct ProcessGroup::Barrier {
    pthread_barrier_t barrier;
};

void* ProcessGroup::SharedMemory(std::size_t size) {
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::system_error(errno, std::generic_category());
    return memory;
}

void ProcessGroup::Meet() {
    pthread_barrier_wait(&barrier_.barrier);
}

int ProcessGroup::Run(const std::function<void(ProcessGroup& group, int place)>& work, int size) {
    auto& barrier = Shared<Barrier>();
    pthread_barrierattr_t attributes;
    pthread_barrierattr_init(&attributes);
    pthread_barrierattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    pthread_barrier_init(&barrier.barrier, &attributes, static_cast<unsigned>(size));
    std::vector<pid_t> running;
    for (int place = 0; place < size; ++place) {
        const pid_t process = fork();
        if (process < 0) throw std::system_error(errno, std::generic_category());
        if (process == 0) {
            try {
                ProcessGroup group(barrier);
                work(group, place);
                _exit(0);
            } catch (const std::exception& error) {
                std::cerr << "process " << place << ": " << error.what() << std::endl;
                _exit(1);
            }
        }
        running.push_back(process);
    }
    int failed = 0;
    for (int ended = 0; ended < size; ++ended) {
        int status = -1;
        const pid_t first = wait(&status);
        std::erase(running, first);
        if (status == 0) continue;
        ++failed;
        for (const pid_t process : running) kill(process, SIGKILL);  // they would wait for it for ever
    }
    return failed;
}

}  // namespace kxjob::testing_support
