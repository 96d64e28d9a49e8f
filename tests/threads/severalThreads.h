// Calls from several threads at once. Under the thread sanitizer any two of them that touch the same
// memory without order fail the test, whatever they answer.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace rfu::test {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

/// Runs `work` in kThreads threads, which begin together.
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

/// Expects of every call of `query` in every thread what it answers in this one.
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
