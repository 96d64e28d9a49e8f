// Calls from several threads at once. Under the thread sanitizer a data race fails the test, whatever the results.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace rfu::test {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

/// Runs `work` in kThreads threads that start together.
template <typename Work>
void inSeveralThreads(Work work) {
    std::atomic<int> missing{kThreads};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&missing, &work] {
            --missing;
            while (missing.load() > 0) {
                std::this_thread::yield();
            }
            work();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// Expects the result of every call of `query` in every thread to be the one in this thread.
template <typename Query>
void expectTheSameAnswers(const char* name, Query query) {
    const auto answer = query();
    std::atomic<int> different{0};
    inSeveralThreads([&] {
        for (int round = 0; round < kRounds; ++round) {
            if (!(query() == answer)) {
                ++different;
            }
        }
    });
    EXPECT_EQ(different.load(), 0) << name;
}

}  // namespace rfu::test
