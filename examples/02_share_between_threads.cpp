// One IRI, read by four threads at once without a lock. Forms that are worked out on demand are worked out
// safely; only assignment and swap need a value to themselves.
//
// Prints:
//   400 readers saw http://b%C3%BCcher.example/a

#include <foundation/network/IRI.hpp>

#include <atomic>
#include <iostream>
#include <thread>
#include <vector>

int main() {
    using foundation::network::IRI;

    IRI const shared(u"http://bücher.example/a");
    std::atomic<int> same{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&shared, &same] {
            for (int round = 0; round < 100; ++round) {
                IRI const copy = shared; // copying is reading, too
                same += shared.toAsciiString(false) == u"http://b%C3%BCcher.example/a" && copy == shared;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    std::cout << same << " readers saw " << shared << '\n';
}
