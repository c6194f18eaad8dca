#pragma once

#include <thread>
#include <vector>

namespace support {

/// Runs `work` with each number below `count` on a thread of its own, until all have come back.
template <class Work>
void onThreads(std::size_t count, Work work) {
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i != count; ++i) {
        threads.emplace_back([&work, i] { work(i); });
    }
}

} // namespace support
