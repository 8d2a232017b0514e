#include "halvane/platform/os/serial_queue.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <numeric>
#include <optional>
#include <pthread.h>
#include <thread>
#include <utility>
#include <vector>

#include "halvane/platform/os/counting_semaphore.h"

#include "tests/support/child_process.h"
#include "tests/support/serial_queue_waits.h"

namespace {

using halvane::CountingSemaphore;
using halvane::SerialQueue;
using halvane::testing::drain;
using halvane::testing::isTrueInChild;
using halvane::testing::waitUntilIdle;

TEST(SerialQueue, RunsWorkInOrder) {
    std::vector<int> order;
    SerialQueue queue("order");
    for (int i = 0; i < 10000; ++i) queue.async([&order, i] { order.push_back(i); });
    drain(queue);
    std::vector<int> expected(10000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
}

TEST(SerialQueue, KeepsTheOrderOfEachOfManyThreads) {
    constexpr int kThreads = 4, kEach = 2000;
    std::array<std::vector<int>, kThreads> order;
    SerialQueue queue("threads");
    std::vector<std::thread> threads;
    for (auto& mine : order) {
        threads.emplace_back([&queue, &mine] {
            for (int i = 0; i < kEach; ++i) queue.async([&mine, i] { mine.push_back(i); });
        });
    }
    for (auto& thread : threads) thread.join();
    drain(queue);
    std::vector<int> expected(kEach);
    std::iota(expected.begin(), expected.end(), 0);
    for (const auto& mine : order) EXPECT_EQ(mine, expected);
}

TEST(SerialQueue, RunsWorkThatWorkHasGiven) {
    std::vector<int> order;
    CountingSemaphore done(0);
    SerialQueue queue("nested");
    queue.async([&] {
        queue.async([&] {
            order.push_back(2);
            done.signal();
        });
        order.push_back(1);
    });
    done.wait();
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(SerialQueue, LetsNoGuestPassAppendedWork) {
    std::vector<int> order;
    SerialQueue queue("bursts");
    waitUntilIdle(queue);
    for (int i = 0; i < 3; ++i) queue.handle().append([&order, i] { order.push_back(i); });
    CountingSemaphore done(0);
    std::thread::id ranOn;
    queue.handle().runOrAsync([&] {
        ranOn = std::this_thread::get_id();
        order.push_back(3);
        done.signal();
    });
    done.wait();
    EXPECT_NE(ranOn, std::this_thread::get_id());
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3}));
}

TEST(SerialQueue, RunsAppendedWorkOnceItIsWoken) {
    std::vector<int> order;
    CountingSemaphore done(0);
    SerialQueue queue("woken");
    waitUntilIdle(queue);
    queue.handle().append([&] { order.push_back(1); });
    queue.handle().append([&] {
        order.push_back(2);
        done.signal();
    });
    queue.handle().wake();
    done.wait();
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    queue.handle().wake();  // nothing is left
}

TEST(SerialQueue, RunsAppendedWorkBeforeLaterWork) {
    std::vector<int> order;
    SerialQueue queue("order");
    for (int i = 0; i < 1000; ++i) {
        if (i % 3 == 0) waitUntilIdle(queue);
        queue.handle().append([&order, i] { order.push_back(2 * i); });
        queue.async([&order, i] { order.push_back(2 * i + 1); });
    }
    drain(queue);
    std::vector<int> expected(2000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
}

TEST(SerialQueue, DropsAppendedWorkThatNobodyWoke) {
    const auto owned = std::make_shared<int>(0);
    bool hasRun = false;
    {
        SerialQueue queue("dropped");
        waitUntilIdle(queue);
        queue.handle().append([owned, &hasRun] { hasRun = true; });
    }
    EXPECT_FALSE(hasRun);
    EXPECT_EQ(owned.use_count(), 1);
}

TEST(SerialQueue, IsCurrentOnItsOwnThreadAlone) {
    SerialQueue queue("mine"), other("other");
    std::optional<bool> onItself, onOther;
    EXPECT_FALSE(queue.isCurrent());
    queue.async([&] { onItself = queue.isCurrent(); });
    other.async([&] { onOther = queue.isCurrent(); });
    drain(queue);
    drain(other);
    EXPECT_EQ(onItself, true);
    EXPECT_EQ(onOther, false);
}

TEST(SerialQueue, NamesItsThreadAfterItsLabel) {
    std::array<char, 16> name{};
    SerialQueue queue("org.example.service.reply.queue");
    EXPECT_EQ(queue.label(), "org.example.service.reply.queue");
    queue.async([&] { ::pthread_getname_np(::pthread_self(), name.data(), name.size()); });
    drain(queue);
    EXPECT_STREQ(name.data(), "ice.reply.queue");
}

TEST(SerialQueue, DestroysWorkOnceItHasRun) {
    SerialQueue queue("destroys");
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    queue.async([token = std::move(token)] {});
    drain(queue);
    EXPECT_TRUE(watch.expired());
}

// --- Work that runs instead of the queue's thread ---

TEST(SerialQueue, RunsWorkAtOnceWhileThereIsNoOther) {
    SerialQueue queue("guest");
    const SerialQueue::Handle handle = queue.handle();
    waitUntilIdle(queue);
    EXPECT_FALSE(queue.isCurrent());
    bool isCurrent = false;
    handle.runOrAsync([&] { isCurrent = queue.isCurrent(); });
    EXPECT_TRUE(isCurrent);
    EXPECT_FALSE(queue.isCurrent());
    handle.runOrAsync(nullptr);
}

TEST(SerialQueue, DestroysWorkThatRanAtOnceInItsTurn) {
    SerialQueue queue("guest");
    waitUntilIdle(queue);
    bool isInTurn = false;
    std::shared_ptr<void> token(nullptr, [&](void*) { isInTurn = queue.isCurrent(); });
    queue.handle().runOrAsync([token = std::move(token)] {});
    EXPECT_TRUE(isInTurn);
}

TEST(SerialQueue, LetsWorkWaitWhileThereIsOther) {
    SerialQueue queue("busy");
    CountingSemaphore started(0), released(0);
    std::vector<int> order;
    queue.async([&] {
        started.signal();
        released.wait();
        order.push_back(1);
    });
    started.wait();
    queue.handle().runOrAsync([&] { order.push_back(2); });
    queue.async([&] { order.push_back(3); });
    released.signal();
    drain(queue);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(SerialQueue, RunsAfterAGuestWhatHasComeMeanwhile) {
    SerialQueue queue("meanwhile");
    const SerialQueue::Handle handle = queue.handle();
    waitUntilIdle(queue);
    std::vector<int> order;
    handle.runOrAsync([&] {
        queue.async([&] { order.push_back(2); });
        handle.runOrAsync([&] { order.push_back(3); });
        order.push_back(1);
    });
    drain(queue);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(SerialQueue, RunsOneAtATimeWhoeverRunsIt) {
    constexpr int kThreads = 4, kEach = 2000;
    SerialQueue queue("one");
    int count = 0;  // without a lock
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, handle = queue.handle(), isGuest = i % 2 == 0] {
            for (int j = 0; j < kEach; ++j) {
                isGuest ? handle.runOrAsync([&] { ++count; }) : handle.async([&] { ++count; });
            }
        });
    }
    for (auto& thread : threads) thread.join();
    drain(queue);
    EXPECT_EQ(count, kThreads * kEach);
}

TEST(SerialQueue, MayBeDestroyedByAGuest) {
    auto queue = std::make_unique<SerialQueue>("itself");
    const SerialQueue::Handle handle = queue->handle();
    waitUntilIdle(*queue);
    bool isDone = false;
    handle.runOrAsync([&] {
        queue->async([] { ADD_FAILURE() << "ran on a queue that is gone"; });
        queue.reset();
        isDone = true;
    });
    EXPECT_TRUE(isDone);
    handle.runOrAsync([] { ADD_FAILURE() << "ran on a queue that is gone"; });
}

// Returns after the queue is closed. From then on a handle destroys the work that it receives.
void waitUntilClosed(const SerialQueue::Handle& handle) {
    std::weak_ptr<int> watch;
    do {
        auto token = std::make_shared<int>(0);
        watch = token;
        handle.async([token = std::move(token)] { ADD_FAILURE() << "ran on a closing queue"; });
    } while (!watch.expired());
}

TEST(SerialQueue, WaitsForRunningWorkWhenDestroyed) {
    CountingSemaphore started(0);
    std::atomic<bool> isDone = false;
    auto queue = std::make_unique<SerialQueue>("waits");
    queue->async([&, handle = queue->handle()] {
        started.signal();
        waitUntilClosed(handle);
        isDone = true;
    });
    started.wait();
    queue.reset();
    EXPECT_TRUE(isDone);
}

TEST(SerialQueue, WaitsForAGuestWhenDestroyed) {
    auto queue = std::make_unique<SerialQueue>("waits");
    const SerialQueue::Handle handle = queue->handle();
    waitUntilIdle(*queue);
    CountingSemaphore started(0);
    std::atomic<bool> isDone = false;
    std::thread guest([&] {
        handle.runOrAsync([&] {
            started.signal();
            waitUntilClosed(handle);
            isDone = true;
        });
    });
    started.wait();
    queue.reset();
    EXPECT_TRUE(isDone);
    guest.join();
}

TEST(SerialQueue, DropsWaitingWorkWhenDestroyed) {
    CountingSemaphore started(0), released(0);
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    auto queue = std::make_unique<SerialQueue>("drops");
    const SerialQueue::Handle handle = queue->handle();
    queue->async([&] {
        started.signal();
        released.wait();
    });
    queue->async([token = std::move(token)] { ADD_FAILURE() << "ran on a closing queue"; });
    started.wait();
    std::thread destroyer([&] { queue.reset(); });
    waitUntilClosed(handle);
    released.signal();
    destroyer.join();
    EXPECT_TRUE(watch.expired());
}

TEST(SerialQueue, MayBeDestroyedByItsOwnWork) {
    CountingSemaphore ready(0), done(0);
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    auto queue = std::make_unique<SerialQueue>("itself");
    queue->async([&] {
        ready.wait();
        queue.reset();
        done.signal();  // the work continues after its queue has been destroyed
    });
    queue->async([token = std::move(token)] { ADD_FAILURE() << "ran on a queue that is gone"; });
    ready.signal();
    done.wait();
    EXPECT_TRUE(watch.expired());
}

TEST(SerialQueue, MayBeDestroyedWithTheWorkThatOwnsIt) {
    // The queue's owner is destroyed on the queue's thread, after its work has run.
    CountingSemaphore done(0);
    struct Owner {
        SerialQueue queue{"owned"};
        CountingSemaphore* done;
        ~Owner() { done->signal(); }
    };
    auto owner = std::make_shared<Owner>();
    owner->done = &done;
    SerialQueue& queue = owner->queue;
    queue.async([owner = std::move(owner)] {});
    done.wait();
}

TEST(SerialQueue, LetsDroppedWorkCallAnything) {
    // When this work is dropped, it destroys another queue and adds work to its own queue.
    struct Farewell {
        SerialQueue::Handle handle;
        SerialQueue other{"other"};
        explicit Farewell(SerialQueue::Handle own) : handle(std::move(own)) {}
        ~Farewell() {
            handle.async([] { ADD_FAILURE() << "ran on a queue that is gone"; });
        }
    };
    CountingSemaphore ready(0);
    auto queue = std::make_unique<SerialQueue>("farewell");
    queue->async([&] { ready.wait(); });
    queue->async([farewell = std::make_shared<Farewell>(queue->handle())] {});
    std::thread releaser([&, handle = queue->handle()] {
        waitUntilClosed(handle);
        ready.signal();
    });
    queue.reset();
    releaser.join();
}

TEST(SerialQueue, HandlesLeadToTheirQueueWhileItIsThere) {
    CountingSemaphore done(0);
    SerialQueue queue("handle");
    const SerialQueue::Handle handle = queue.handle();
    bool isOnQueue = false;
    handle.async([&] {
        isOnQueue = queue.isCurrent();
        done.signal();
    });
    done.wait();
    EXPECT_TRUE(isOnQueue);
}

TEST(SerialQueue, GoesOnAfterEmptyWork) {
    SerialQueue queue("empty");
    queue.async(nullptr);
    drain(queue);
    queue.handle().async({});
    drain(queue);
}

TEST(SerialQueue, DestroysItsWorkInAnotherProcess) {
    SerialQueue queue("forked");
    const bool isDestroyed = isTrueInChild([&] {
        auto token = std::make_shared<int>(0);
        const std::weak_ptr<int> watch = token;
        queue.async([token = std::move(token)] {});
        return watch.expired();
    });
    EXPECT_TRUE(isDestroyed);
    drain(queue);
}

TEST(SerialQueue, IsNobodysInAnotherProcess) {
    SerialQueue queue("forked");
    waitUntilIdle(queue);
    queue.handle().runOrAsync(
        [&] { EXPECT_TRUE(isTrueInChild([&] { return !queue.isCurrent(); })); });
}

TEST(SerialQueue, MayBeDestroyedInAnotherProcess) {
    auto queue = std::make_unique<SerialQueue>("forked");
    CountingSemaphore released(0);
    queue->async([&] { released.wait(); });
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    queue->async([token = std::move(token)] {});
    EXPECT_TRUE(isTrueInChild([&] {
        queue.reset();
        return !watch.expired();  // the thread may have been using it at the fork
    }));
    released.signal();
    drain(*queue);
}

}  // namespace
