#pragma once

#include <exception>
#include <thread>
#include <vector>

namespace support {

/// Runs `work` with each number below `count` on a thread of its own, until all have come back; then throws
/// what the first of them threw.
template <class Work>
void onThreads(std::size_t count, Work work) {
    std::vector<std::exception_ptr> failures(count);
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i != count; ++i) {
            threads.emplace_back([&work, &failure = failures[i], i] {
                try {
                    work(i);
                } catch (...) {
                    failure = std::current_exception();
                }
            });
        }
    }
    for (auto const& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
}

} // namespace support
