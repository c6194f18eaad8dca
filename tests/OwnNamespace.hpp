#pragma once

#include "support/Threads.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <sched.h>
#include <string>
#include <sys/mount.h>

/// Runs `body` on a thread with a network, a host name and mounts of its own, so that it may set up adapters
/// and names without touching the machine's. Where that isn't permitted, the test is skipped with the reason.
inline void inOwnNamespace(std::function<void()> const& body) {
    std::string reason;
    support::onThreads(1, [&](std::size_t) {
        if (unshare(CLONE_NEWNET | CLONE_NEWUTS | CLONE_NEWNS) != 0 ||
            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            reason = std::string("no namespaces of our own: ") + std::strerror(errno);
        } else if (std::system("ip link set lo up") != 0) {
            reason = "no iproute2 to set up adapters with";
        } else {
            body();
        }
    });
    if (!reason.empty()) {
        GTEST_SKIP() << reason;
    }
}
