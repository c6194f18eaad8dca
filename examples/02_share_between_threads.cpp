// One IRI, read by four threads at once without a lock. Any number of threads may read one value and copy it;
// only assignment, moving and swap need a value to themselves.
//
// Prints:
//   400 reads gave http://b%C3%BCcher.example/a

#include <foundation/network/IRI.hpp>
#include <foundation/network/Utf8.hpp>

#include <array>
#include <atomic>
#include <iostream>
#include <thread>

int main() {
    using foundation::network::IRI;
    using foundation::network::iriFromUtf8;
    using foundation::network::utf8;

    IRI const shared = iriFromUtf8("http://bücher.example/a");
    std::atomic<int> same{0};
    std::array<std::thread, 4> threads;
    for (auto& thread : threads) {
        thread = std::thread([&shared, &same] {
            for (int round = 0; round < 100; ++round) {
                same += utf8(shared).toAsciiString(false) == "http://b%C3%BCcher.example/a" &&
                        IRI(shared) == shared; // copying is reading, too
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    std::cout << same << " reads gave " << shared << '\n';
}
