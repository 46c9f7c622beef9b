#pragma once

#include <functional>

namespace kxjob::testing_support {

/// Several processes that do the same at the same time.
class ProcessGroup {
public:
    static constexpr int kSize = 8;

    /// Runs `work` in each of them, with the place of the process in the group from 0, and waits for their
    /// end. Gives back how many failed: raised, crashed, or were ended because another one had. What `work`
    /// has to hand out must lie in memory of Shared(). Nothing that is connected to a server may be open on
    /// this thread.
    static int Run(const std::function<void(ProcessGroup& group, int place)>& work, int size = kSize);

    /// Waits until every process of the group has come here. To be called by all of them equally often.
    void Meet();

    /// Zeroed memory that the processes share; it stays for as long as this process lives.
    template <typename T>
    static T& Shared() {
        return *static_cast<T*>(SharedMemory(sizeof(T)));
    }

private:
    struct Barrier;

    explicit ProcessGroup(Barrier& barrier) : barrier_(barrier) {}
    static void* SharedMemory(std::size_t size);

    Barrier& barrier_;
};

}  // namespace kxjob::testing_support
