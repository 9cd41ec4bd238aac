#include "platform/linux/common/worker.h"

#include "fakes/recording_log.h"

#include <gmock/gmock.h>

#include <future>
#include <stdexcept>

namespace tarvik {
namespace {

using testing::ElementsAre;

TEST(Worker, tasksRunInOrderOnOneThreadAndAllBeforeItEnds) {
    RecordingLog log;
    std::vector<int> done;
    std::set<std::thread::id> threads;
    {
        Worker worker("test", log);
        for (int i = 0; i < 1000; ++i) {
            worker.post([&, i] {
                done.push_back(i);
                threads.insert(std::this_thread::get_id());
                if (i == 999)
                    worker.post([&] { done.push_back(1000); });
            });
        }
    }
    ASSERT_EQ(done.size(), 1001U);
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
    EXPECT_THAT(threads, testing::SizeIs(1));
    EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

TEST(Worker, aTaskThatThrowsIsLoggedAndTheNextOneRuns) {
    RecordingLog log;
    bool ran = false;
    {
        Worker worker("actions", log);
        worker.post([] { throw std::runtime_error("no way"); });
        worker.post([] { throw 1; });
        worker.post([&] { ran = true; });
    }
    EXPECT_TRUE(ran);
    EXPECT_THAT(log.lines(), ElementsAre("actions: a task failed: no way", "actions: a task failed"));
}

TEST(Worker, whatATaskHoldsIsFreedBeforeTheThreadWaits) {
    RecordingLog log;
    Worker worker("test", log);
    std::promise<void> freed;
    worker.post([held = std::shared_ptr<void>(nullptr, [&](void*) { freed.set_value(); })] {});
    EXPECT_EQ(freed.get_future().wait_for(std::chrono::seconds(5)), std::future_status::ready);
}

} // namespace
} // namespace tarvik
